"""Random inputs of each kind of component, in US and SI units: the results through TOML, JSON and Python are the same,
and have the bits that the engine's own C surface gives without the vessel library.

    ways_test.py LIBRARY ENGINE_LIBRARY PROGRAM KIND_CALLS SOURCE [KIND...]

Inputs and calls of a kind are here, or in its file in tests/kinds, of which KIND_CALLS is the program.
"""

import ctypes
import json
import math
import random
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

SKIPPED = 77
COUNT, AT_ONCE = 500, 50

try:
    import tomllib  # noqa: F401  of the package's way through TOML
except ImportError as missing:
    print(f"not run: {missing}")
    sys.exit(SKIPPED)


def single(value):
    return ctypes.c_float(value).value


class Units:
    """Those of the host guide: factors from the engine's units, and labels."""

    def __init__(self, name, factors, labels, density):
        self.name, self.metric, self.labels = name, name == "SI", labels
        self.factors = [single(factor) for factor in factors]
        kinds = ("thickness", "pressure", "diameter", "stress", "", "force", "moment", "area")
        self.by_kind = {kind: factor for kind, factor in zip(kinds, self.factors)}
        self.by_kind["density"] = single(density)
        self.offset, self.scale = self.factors[8:10]

    def to_engine(self, value, kind):
        value = single(value)
        if kind == "temperature":
            return single(single(value * self.scale) + self.offset)
        if kind == "temperature difference":
            return single(value * self.scale)
        return single(value / self.by_kind.get(kind, 1.0))

    def shown(self, value, kind):
        if kind == "temperature":
            return single(single(value - self.offset) / self.scale)
        if kind == "temperature difference":
            return single(value / self.scale)
        return single(value * self.by_kind.get(kind, 1.0))


US = Units("US", [1] * 8 + [0, 1, 1], ["in.", "psig", "in.", "psi", "", "lbf", "ft-lbs", "in\xb2", "\xb0F", "lbm"], 1)
SI = Units(
    "SI", [25.4, 0.00689475729, 25.4, 0.00689475729, 1, 4.44822162, 1.35581795, 645.16, 32, 1.8, 0.45359237],
    ["mm", "MPa", "mm", "MPa", "", "N", "N-m", "mm\xb2", "\xb0C", "kg"], 27679.9047)

KINDS = {
    "thickness": "t ci ce g0 g1 h tw tg w lp tp dfAllow tShell caShell Ut tk tr tg_sr".split(),
    "diameter": "B A LjID LjOD C a Fod Fid Go Gi D d L Dshell Do D2 r length Dsmall cone_length".split(),
    "pressure": ["P", "P_external"], "stress": "Sfo Sfa Sb Sa y yPart Sn Sna S Sy Sy_cold".split(),
    "force": "axial_force mating_operating mating_seating mating_design".split(), "moment": ["bending_moment"],
    "area": ["root_area"], "temperature": ["T", "MDMT"], "temperature difference": ["pad_reduction"],
    "density": ["density"],
}
KIND = {key: kind for kind, keys in KINDS.items() for key in keys}


QUANTITIES = {}  # by kind and key, of the kinds of tests/kinds


def quantity(component, key):
    if component in QUANTITIES:
        return QUANTITIES[component][key]
    return None if (component, key) == ("shell", "C") else KIND.get(key)  # the factor of a flat head


CHOICES = {
    "flange.type": ["", "weld neck", "slip on", "ring", "loose slip on", "loose ring", "lap joint", "blind",
                    "reverse weld neck", "loose reverse"],
    "flange.kind": ["", "analyse", "thickness", "design"], "code": ["", "VIII-1", "VIII-2", "PD 5500", "EN 13445"],
    "edition": ["current", "older", "A98"], "bolting": ["", "TEMA", "UNC", "special"], "column": ["", "I", "II"],
    "facing": ["", "1a", "1b", "1c", "1d", "2", "3", "4", "5", "6"], "seating_rule": ["mean", "bolt area"],
    "kind": ["", "cylinder", "elliptical", "torispherical", "sphere", "cone", "flat"],
    "service": ["none", "air, steam and water", "unfired steam boiler"], "method": ["code", "chart", "stress"],
    "curve": ["", "A", "B", "C", "D"],
}
CHOICES.update(facing_part=CHOICES["facing"], column_part=CHOICES["column"])
DEFAULTS = {
    "flange": {"kind": 1, "code": 1, "E": 1.0, "use_corrosion": 1, "material_class": 1, "density": single(0.283599),
               "column": 1, "facing_part": 1, "column_part": 1},
    "shell": {"code": 1, "E": 1.0, "material_class": 1, "k": 2.0},
    "external": {"code": 1, "material_class": 1, "k": 2.0},
    "mdmt": {"code": 1, "E": 1.0, "ratio": 1.0, "reductions": 1, "d2_class": 1},
}


# Switches of a flange that are on when one of these keys is given.
SWITCHED = {"external_loads": ("axial_force", "bending_moment"), "mating_loads": ("mating_operating",),
            "partition_gasket": ("lp", "tp", "mPart", "yPart")}


class Values(dict):
    """In the engine's units; what neither was given nor has a default is 0."""

    def __missing__(self, key):
        return 0.0


def engine_values(kind, given, units):
    v = Values(DEFAULTS.get(kind, {}))
    for key, value in given.items():
        choices = None if kind in QUANTITIES else CHOICES.get(f"{kind}.{key}", CHOICES.get(key))
        if choices and isinstance(value, str):
            v[key] = choices.index(value)
        elif isinstance(value, str):
            v[key] = value
        else:
            v[key] = units.to_engine(value, quantity(kind, key))
    for switch, keys in SWITCHED.items():
        if kind == "flange" and any(key in given for key in keys):
            v[switch] = 1.0
    return v


# ---- random inputs ------------------------------------------------------------------------------------------

BOLTS = (0.5, 0.625, 0.75, 0.875, 1.0, 1.125, 1.25, 1.375, 1.5, 1.75, 2.0)


def random_flange(r):
    between, one, chance = r.uniform, r.choice, lambda share: r.random() < share
    B, g0, a = between(6, 48), between(0.25, 1.2), one(BOLTS)
    kind = one(["analyse"] * 8 + ["thickness"] * 3 + ["design"])
    v = {
        "type": one(CHOICES["flange.type"][1:]), "kind": kind, "code": one(["VIII-1"] * 3 + CHOICES["code"][2:]),
        "P": between(15, 400) * (-0.1 if chance(0.1) else 1.0), "T": between(70, 600), "ci": one([0.0, 0.0625, 0.125]),
        "Sfo": between(15000, 20000), "Sfa": 20000.0, "Sb": between(20000, 25000), "Sa": 25000.0, "t": between(0.8, 5),
        "g0": g0, "g1": g0 + between(0.1, 1.2), "h": between(0.8, 4), "bolting": one(["TEMA", "UNC", "special"]),
        "a": a, "n": 4 * r.randint(2, 12), "m": between(0.5, 4), "y": between(0, 12000), "tg": 0.125,
        "column": one(["I", "II"]), "facing": one(["1a", "1a"] + CHOICES["facing"][1:]), "rigidity": chance(0.5),
        "corroded_rigidity": chance(0.3), "use_corrosion": chance(0.8), "seating_rule": one(CHOICES["seating_rule"]),
        "E": one([0.7, 0.85, 1.0]), "chart": "CS-2", "description": f"No. {r.randint(1, 999)}",
    }
    if v["bolting"] == "special":
        v["root_area"] = between(0.1, 2)
    if v["facing"] not in ("1a", "1b"):
        v["w"] = between(0.1, 0.3)
    v["Gi"] = B + between(0.2, 1.2)
    v["Go"] = v["Gi"] + between(0.6, 2.5)
    v["Fod"], v["Fid"] = v["Go"] + between(0, 0.3), v["Gi"] - between(0, 0.3)
    v["C"] = max(v["Go"], B + 2 * v["g1"]) + a + between(0.5, 2)
    v["A"] = v["C"] + 2 * a + between(0.5, 1.5)
    if v["type"] == "blind":
        for key in ("g0", "g1", "h"):
            del v[key]
        if chance(0.3):
            v.update(D=v["C"], d=v["C"] * between(0.6, 1))
    else:
        v["B"] = B
    if v["type"] == "lap joint":
        v.update(LjID=v["Gi"], LjOD=v["Go"])
    if v["type"] in ("reverse weld neck", "loose reverse"):
        v.update(Dshell=v["A"] - 1, tShell=between(0.4, 1.5))
    if v["type"] in ("loose ring", "lap joint"):
        v["splits"] = r.randint(0, 2)
    if v["code"] == "VIII-2" and chance(0.4):
        v["edition"] = "older"
    if v["code"] == "VIII-1" and chance(0.1):
        v["edition"] = "A98"
    if chance(0.15):
        v.update(axial_force=between(0, 5000), bending_moment=between(0, 3000))
    if chance(0.05):
        v.update(mating_operating=between(0, 1e5), mating_seating=between(0, 1e5), mating_design=between(0, 1e5))
    if chance(0.1):
        v.update(lp=B, tp=between(0.2, 0.6), mPart=between(0.5, 3), yPart=between(0, 5000), facing_part="1a")
    if chance(0.2):
        v.update(ce=0.0625, tw=between(0, 0.3), Sn=between(10000, 20000), Sna=20000.0, hub_shell_stress=chance(0.5))
    return v


def random_element(r, kinds):
    D, kind = r.uniform(10, 150), r.choice(kinds)
    v = {"kind": kind, "T": r.uniform(70, 600), "t": r.uniform(0.2, 2.5), "ci": r.choice([0.0, 0.0625, 0.125]),
         "Ut": r.choice([0.0, 0.0, 0.01]), r.choice(["D", "D", "Do"]): D,
         "service": r.choice(["none", "unfired steam boiler"]),
         "material_class": r.choice([1, 2, 4]), "S": r.uniform(10000, 20000), "Sy": r.uniform(20000, 38000)}
    if kind == "elliptical":
        v.update(k=r.uniform(1.5, 2.5), corroded_K=r.random() < 0.5)
    if kind == "torispherical":
        v.update(L=D * r.uniform(0.7, 1.0), r=D * r.uniform(0.06, 0.17))
    if kind == "cone":
        v["alpha"] = r.uniform(5, 58)
    return v


def random_shell(r):
    v = random_element(r, CHOICES["kind"][1:])
    v.update(P=r.uniform(10, 800), E=r.choice([0.7, 0.85, 1.0]), Sa=20000.0, Sy_cold=38000.0)
    if v["kind"] == "flat":
        v.update(C=r.uniform(0.13, 0.33))
        if r.random() < 0.4:
            v["D2"] = (v.get("D") or v.get("Do")) * r.uniform(1.0, 2.0)
    if v["kind"] == "cone" and r.random() < 0.5:
        v.update(r=r.uniform(2, 10), tk=v["t"] + 0.1)
    if v["kind"] in ("elliptical", "torispherical") and r.random() < 0.3:
        v.update(code="VIII-2", edition="older")
    return v


def random_external(r):
    v = random_element(r, CHOICES["kind"][1:6])
    v.update(P_external=r.choice([0.0, 15.0, r.uniform(5, 80)]), method=r.choice(CHOICES["method"]),
             chart=r.choice(["CS-1", "CS-2"]))
    if v["kind"] in ("cylinder", "cone"):
        v.update(length=r.uniform(20, 300), table_g=r.random() < 0.3)
    if v["kind"] == "cone":
        D = v.get("D") or v.get("Do")
        v.update(Dsmall=D * r.uniform(0.3, 0.9), cone_length=r.uniform(20, 100))
    if r.random() < 0.3:
        v.update(code="VIII-2")
        if r.random() < 0.5 or v["method"] == "chart":
            v["edition"] = "older"
    return v


def random_mdmt(r):
    v = {"curve": r.choice("ABCD"), "tg": r.uniform(0.2, 4.5), "MDMT": r.uniform(-60, 60), "T": r.uniform(70, 600),
         "E": r.choice([0.7, 0.85, 1.0]), "ci": r.choice([0.0, 0.125]), "Sy": r.uniform(30000, 60000)}
    for flag in ("pwht", "credit", "credit_floor", "ug20f", "curve_tables"):
        v[flag] = r.random() < 0.3
    v["reductions"] = r.random() < 0.8
    v.update({"tr": v["tg"] * r.uniform(0.2, 0.95)} if r.random() < 0.5 else {"ratio": r.uniform(0.2, 1.0)})
    if r.random() < 0.3:
        v.update(code="VIII-2", d2_class=r.randint(0, 1), edition=r.choice(["current", "older"]))
    elif r.random() < 0.2:
        v["edition"] = "A98"
    if r.random() < 0.2:
        v["tg_sr"] = v["tg"] * r.uniform(0.9, 1.0)
    return v


RANDOM = {"flange": random_flange, "shell": random_shell, "external": random_external, "mdmt": random_mdmt}


def in_units(kind, given, units):
    """Numbers with the few digits that a file has."""
    turned = {}
    for key, value in given.items():
        if isinstance(value, float):
            turned[key] = float(f"{units.shown(value, quantity(kind, key)):.6g}")
        else:
            turned[key] = value
    return turned


# ---- the ways -----------------------------------------------------------------------------------------------


def toml(request):
    def value(of):
        return str(of).lower() if isinstance(of, bool) else json.dumps(of)

    lines = [f"{name} = {value(of)}" for name, of in request.items() if not isinstance(of, list)]
    for kind in (name for name, of in request.items() if isinstance(of, list)):
        for component in request[kind]:
            lines += [f"[[{kind}]]", *(f"{key} = {value(of)}" for key, of in component.items())]
    return "\n".join(lines) + "\n"


class Json:
    """vessel.h as it is."""

    def __init__(self, library):
        self.library = ctypes.CDLL(library)
        self.handle = ctypes.c_void_p()
        assert self.library.tarvane_open(1, None, ctypes.byref(self.handle)) == 0
        self.library.tarvane_last_error.restype = ctypes.c_char_p

    def calculate(self, request):
        text = ctypes.c_char_p()
        status = self.library.tarvane_calculate(self.handle, json.dumps(request).encode(), 3, ctypes.byref(text))
        if status != 0:
            return None, self.library.tarvane_last_error(self.handle).decode()
        return tarvane._vessel.read_json(text.value), ""


# ---- the engine's results -----------------------------------------------------------------------------------

PLACES = ("SH", "SR", "ST", "SA", "BS", "SV", "SF")
BLOCK_NAMES = {"b_prime": "bPrime", "b_part": "bPart", "Hp_prime": "HpPrime", "alpha_r": "Alphar",
               "t_req": "t_required"}
NO_TEMPERATURE, UG20F_DOES_NOT_APPLY = single(1.0101), 650.0
# Shown in foot-pounds.
MOMENTS = ("Md", "Mt", "Mg", "Mr", "Moe", "Mop", "Matm")


def flange_results(engine, v, units, number):
    record, found, block = engine.flange(v, units, number)
    found["t_req"] = found["t_req"] if found["t_req"] > 0.0 else None
    found["t_req_new"] = found["t_req_new"] if found["t_req_new"] > 0.0 else None
    found["t_req_new_cold"] = found["t_req_new_cold"] if found["t_req_new_cold"] > 0.0 else None
    loads = record[122] != 0.0 and not v["P"] < 0.0
    for i, name in enumerate(("W", "Wm1", "Wm2", "G", "Mop", "Matm", "Ab", "Am")):
        value = record[119 + i]
        found[name] = (value or None) if name == "G" else value if loads else None
    for row, letter in enumerate("oa"):
        for place, name in enumerate(PLACES):
            found[name + letter] = block.stress[row][place]
    for name in ("t_used", "t_edge", "t_min", "t_stress", "t_rigid", "t_channel", "P_bolts", "Peq", "N", "N_min", "bo",
                 "b", "b2", "b_prime", "b_part", "H", "Hd", "Ht", "Hp", "Hp_prime", "HGY", "HG", "Wext", "Am1", "Am2",
                 "hd", "ht", "hg", "Md", "Mt", "Mg", "Mr", "Moe", "bolt_spacing", "bolt_spacing_min",
                 "bolt_spacing_max", "radial", "radial_min", "edge", "edge_min", "CF", "K", "T_factor", "U", "Y", "Z",
                 "Yr", "alpha_r", "F", "V", "f", "e", "d", "ho", "kf", "E_cold", "E_hot", "deflection",
                 "deflection_allowed", "hub_required", "hub_mawp"):
        found[name] = getattr(block, BLOCK_NAMES.get(name, name))
    return {name: single(value / 12.0) if name in MOMENTS and value not in (None, NO_VALUE) else value
            for name, value in found.items()}, engine.records


def shell_results(engine, v, units, _):
    block = engine.shell(v, units)
    found = {name: getattr(block, BLOCK_NAMES.get(name, name)) for name in (
        "t_governing", "t_req", "mawp", "map_nc", "stress", "tc", "t_req_raw", "t_least", "mawp_formula",
        "mawp_knuckle", "stress_knuckle", "mawp_14f", "map_nc_14f", "t_crown", "t_knuckle", "crown_radius", "ratio",
        "shape_factor", "span")}
    found["t_14f"] = block.t_14f or None
    if block.formula != 14:  # the older Division 2 has no corrosion at failure
        t, D, tk = single(v["t"] - v["Ut"]), v["Do"] if "Do" in v else v["D"], v["tk"]
        if block.knuckle:
            tk = single(tk - v["Ut"])
        if "Do" in v and v["kind"] != 6:  # the tolerance comes off the outside
            slope = single(math.cos(single(v["alpha"] * single(single(3.1415927) / 180.0)))) if v["kind"] == 5 else 1.0
            D = single(D - single(single(2.0 * v["Ut"]) / slope))
        own, knuckle = engine.shell_failure(v, D, t, tk)
        found["failure_ca"] = knuckle if 0.0 <= knuckle < own else own
    return found, None


def external_results(engine, v, units, _):
    found, by_stress = engine.external(v, units)
    pressure = v["P_external"] > single(0.001)
    found["maep_chart"], thickness = found.pop("maep"), found.pop("tca")
    found["tca_chart"] = thickness if pressure else None
    if not pressure or v["kind"] != 1:
        found["slen"] = None
    head = v["kind"] in (2, 3) and v["code"] == 1 and not by_stress
    if head or not pressure:
        del found["failure_ca"]  # the lesser one of two
    found.update({"A": None, "B": None} if by_stress else {"fha": None})
    return found, None


def mdmt_results(engine, v, units, _):
    found = engine.mdmt(v, units)
    if found["mdmt"] == NO_TEMPERATURE:
        found["reduction"] = None
    if not v["ug20f"] or found["T_ug20f"] == UG20F_DOES_NOT_APPLY:
        found["T_ug20f"] = None
    if found["ratio"] < 0.0:
        found["ratio"] = None
    found = {name: None if value == NO_TEMPERATURE else value for name, value in found.items()}
    return found, None


RESULTS = {"flange": flange_results, "shell": shell_results, "external": external_results, "mdmt": mdmt_results}


# What a component does not have is 0.0 of the engine, and no result.
NONE_AT_ZERO = {
    "flange": {"SHo", "SRo", "STo", "SAo", "BSo", "SVo", "SFo", "SHa", "SRa", "STa", "SAa", "BSa", "SVa", "SFa",
               "b_part", "Ht", "Hp_prime", "HGY", "Wext", "ht", "Mt", "Mg", "Mr", "Moe", "K", "T_factor", "U", "Y", "Z",
               "F", "V", "f", "e", "d", "ho", "weight_finished", "weight_forging", "designed.g1", "designed.g0",
               "designed.h"},
    "shell": {"crown_radius"},
}


def bits(value):
    return struct.pack("<f", value)


def differences(kind, found, results, quantities, units):
    """Names whose bits differ."""
    wrong = []
    for name, value in found.items():
        told = results[name]
        missing = value is None or value == NO_VALUE or not math.isfinite(value)
        missing = missing or value == 0.0 and name in NONE_AT_ZERO.get(kind, ())
        if missing != (told is None) or not missing and bits(units.shown(value, quantities[name])) != bits(told):
            wrong.append(f"{name}: {told!r}, not {value!r} in the engine's units")
    return wrong


class KindCalls:
    """Random inputs and the engine's own calls of a kind by the program of tests/kinds."""

    def __init__(self, program, kind):
        drawn = subprocess.run([program, kind, str(2 * COUNT)], capture_output=True, check=True, text=True).stdout
        self.inputs = [json.loads(line) for line in drawn.splitlines()]
        self.calls = subprocess.Popen([program, kind], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def random(self, _):
        return self.inputs.pop()

    def results(self, _engine, v, _units, _number):
        given = (f"{key}={value if isinstance(value, str) else format(value, '.9g')}" for key, value in v.items())
        print("\t".join(given), file=self.calls.stdin, flush=True)
        found = (pair.split("=") for pair in self.calls.stdout.readline().rstrip("\n").split("\t"))
        return {name: single(float(value)) if value else None for name, value in found}, None

    def end(self):
        self.calls.stdin.close()
        assert self.calls.wait() == 0
        self.calls.stdout.close()


def lines_of(records):
    return [line[1:101].rstrip() for line in records.decode("latin-1").split("\n")]


class Comparison:
    def __init__(self, library, engine, program, kind_calls, source):
        self.json, self.program = Json(library), program
        self.vessel = tarvane.Vessel(library)
        self.engine = engine_calls.Engine(engine, Path(source) / "include" / "tarvane")
        kinds = self.vessel.schema("keys")["kinds"]
        self.kinds = [kind["name"] for kind in kinds]
        self.quantities = {
            kind["name"]: {result["name"]: result["quantity"] for result in kind["results"]} for kind in kinds
        }
        self.choices = {
            (kind["name"], result["name"]): {choice["number"]: choice["name"] for choice in result["choices"]}
            for kind in kinds
            for result in kind["results"]
            if "choices" in result
        }
        self.faults, self.compared, self.calls = [], 0, []
        for table in subprocess.run([kind_calls], capture_output=True, check=True, text=True).stdout.split():
            own = next(kind for kind in kinds if kind["name"] == table)
            QUANTITIES[table] = {key["name"]: key["quantity"] for key in own["keys"]}
            self.calls.append(KindCalls(kind_calls, table))
            RANDOM[table], RESULTS[table] = self.calls[-1].random, self.calls[-1].results
        for kind in self.kinds:
            if kind not in RESULTS:
                self.faults.append(f"{kind}: no calls of the engine, neither here nor in tests/kinds/{kind}_test.cpp")

    def end(self):
        for calls in self.calls:
            calls.end()

    def batch(self, random_numbers, kind, units):
        """Components that can be calculated, with their results by the three ways."""
        components = []
        while len(components) < AT_ONCE:
            given = in_units(kind, RANDOM[kind](random_numbers), units)
            found, why = self.json.calculate({"units": units.name, kind: [given]})
            if found is not None:
                components.append(given)
            else:
                self.refused.append(why)
        request = {"units": units.name, kind: components}
        by_json, _ = self.json.calculate(request)
        by_python = self.vessel.calculate(request, drawings=False).to_dict()
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "request.toml")
            path.write_text(toml(request), encoding="utf-8")
            by_toml = self.vessel.calculate(path, drawings=False).to_dict()
        for way, result in (("TOML", by_toml), ("Python", by_python)):
            if result != by_json:
                self.faults.append(f"{kind}, {units.name}: through {way} another result than through JSON")
        return components, by_json[kind]

    def compare(self, kind, given, units, number, result):
        v = engine_values(kind, given, units)
        found, records = RESULTS[kind](self.engine, v, units, number)
        told = dict(result["results"])
        for name in found:
            names = self.choices.get((kind, name))
            if names and told[name] is not None:
                told[name] = next(choice for choice, text in names.items() if text == told[name])
        wrong = differences(kind, found, told, self.quantities[kind], units)
        if records is not None:
            told, own = [line["text"].rstrip() for line in result["report"]], lines_of(records)
            if told != own[: len(told)] or any(own[len(told) :]):
                wrong.append("the report: " + next(f"{a!r}, not {b!r}" for a, b in zip(told, own) if a != b))
        return wrong

    def run(self, kind):
        random_numbers, self.refused = random.Random(f"tarvane {kind}"), []
        for number in range(COUNT // AT_ONCE):
            units = (US, SI)[number % 2]
            components, results = self.batch(random_numbers, kind, units)
            for place, (given, result) in enumerate(zip(components, results), 1):
                wrong = self.compare(kind, given, units, place, result)
                if wrong:
                    self.faults.append(f"{kind}, {units.name}, {given}: " + "; ".join(wrong))
                self.compared += 1
            if number == 0:
                self.plant(kind, components, results)
            if number < 2 and kind == "flange":
                self.run_program(components[:3], units)
        print(f"{kind}: {COUNT} compared; {len(self.refused)} refused as they were drawn")

    def run_program(self, components, units):
        """`tarvane run` writes the report that the engine writes."""
        with tempfile.TemporaryDirectory() as folder:
            path, report = Path(folder, "flanges.toml"), Path(folder, "report.txt")
            path.write_text(toml({"units": units.name, "flange": components}), encoding="utf-8")
            subprocess.run([self.program, "run", path, "--report", report], capture_output=True, check=False)
            written = report.read_bytes()
        for place, given in enumerate(components, 1):
            self.engine.flange(engine_values("flange", given, units), units, place)
            if not self.engine.records or self.engine.records not in written:
                self.faults.append(f"flange, {units.name}, {given}: another report by the program")

    def plant(self, kind, components, results):
        """Dimensions off by a millionth must be noticed."""
        for place, (given, result) in enumerate(zip(components, results), 1):
            nudged = {key: value * (1 + 2**-20) if quantity(kind, key) == "thickness" else value
                      for key, value in given.items()}
            if self.compare(kind, nudged, US, place, result):
                break
        else:
            self.faults.append(f"{kind}: a planted difference was not found")


if __name__ == "__main__":
    sys.path[:0] = [str(Path(sys.argv[5]) / "python"), str(Path(__file__).parent)]
    sys.dont_write_bytecode = True
    import engine_calls
    import tarvane
    from engine_calls import NO_VALUE

    comparison = Comparison(*sys.argv[1:6])
    for component_kind in sys.argv[6:] or filter(RESULTS.get, comparison.kinds):
        comparison.run(component_kind)
    comparison.end()
    print("\n".join(comparison.faults[:20]))
    sys.exit(bool(comparison.faults) or comparison.compared == 0)
