"""The engine's own C surface, driven without the vessel library: its calls for one flange, shell, element under
external pressure or metal temperature, with numbers in its units. The blocks are read from the headers."""

import ctypes
import re
from pathlib import Path

Real, Integer = ctypes.c_float, ctypes.c_int32
TAKE = ctypes.CFUNCTYPE(Integer, ctypes.c_void_p, ctypes.POINTER(ctypes.c_char), Integer)
STOP = ctypes.CFUNCTYPE(None, ctypes.c_void_p, Integer)
TYPES = {"float": Real, "int32_t": Integer, "char": ctypes.c_char}

# Offsets of the slots of the flange text, and elements of its record, by their keys.
SLOTS = {"material": 0, "bolt_material": 15, "description": 30, "external_loads": 45, "mating_loads": 60,
         "channel_cover": 75, "use_corrosion": 90, "partition_gasket": 105, "chart": 120}
RECORD = {
    "type": 2, "kind": 3, "P": 4, "T": 5, "Sfo": 6, "Sfa": 7, "t": 8, "ci": 9, "B": 10, "A": 11, "Fod": 12, "Fid": 13,
    "Go": 14, "Gi": 15, "g0": 16, "g1": 17, "h": 18, "Sb": 19, "Sa": 20, "C": 21, "a": 22, "bolting": 23, "n": 24,
    "m": 25, "y": 26, "facing": 27, "column": 28, "tg": 29, "w": 30, "lp": 31, "material_class": 34, "D": 35, "d": 36,
    "dfAllow": 37, "L": 38, "LjID": 39, "LjOD": 40, "splits": 41, "tw": 42, "mating_operating": 44,
    "mating_seating": 45, "mating_design": 46, "axial_force": 48, "bending_moment": 50, "root_area": 51, "tp": 52,
    "density": 53, "Dshell": 54, "mPart": 55, "yPart": 56, "facing_part": 57, "column_part": 58, "Sn": 60, "Sna": 61,
    "ce": 63, "tShell": 71, "hub_shell_stress": 72, "seating_rule": 73, "caShell": 74,
}
NO_VALUE = Real(-1.0101).value


def constants(text):
    return {name: int(value) for name, value in
            re.findall(r"(?:#define )?\b(TARVANE_\w+)(?: =)? \(?(-?\d+)\b(?!\.)", text)}


def structure(text, name, known):
    """A ctypes structure of a typedef of the headers."""
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)
    body = re.search(r"typedef struct \{([^{}]*)\} " + name + ";", text).group(1)
    fields = []
    for declaration in filter(str.strip, body.split(";")):
        kind, names = declaration.split(None, 1)
        for one in names.split(","):
            field, *sizes = re.findall(r"\w+", one)
            for size in reversed(sizes):
                kind_of = TYPES[kind] if size is sizes[-1] else kind_of
                kind_of = kind_of * (int(size) if size.isdigit() else known[size])
            fields.append((field, kind_of if sizes else TYPES[kind]))
    return type(name, (ctypes.Structure,), {"_fields_": fields})


class Services(ctypes.Structure):
    _fields_ = [("version", Integer), ("message_box", ctypes.c_void_p), ("dialog_text", ctypes.c_void_p),
                ("end_dialog", ctypes.c_void_p), ("report_fatal", STOP), ("stop", STOP),
                ("clock", ctypes.c_void_p), ("user", ctypes.c_void_p)]


class Engine:
    """The library, with the units of the report: eleven factors, ten labels."""

    def __init__(self, library, headers):
        self.library = ctypes.CDLL(library)
        names = ("openings.h", "results.h", "shell.h", "toughness.h", "tarvane.h")
        text = "".join((Path(headers) / name).read_text() for name in names)
        known = constants(text)
        for routine, name in (("GETFLANGERESULTS", "TARVANE_FLANGE_RESULTS"),
                              ("GETSHELLRESULTS", "TARVANE_SHELL_RESULTS"), ("GETMDMTRESULTS", "TARVANE_MDMT_RESULTS"),
                              ("GETELEMENTTABLES", "TARVANE_ELEMENT_ROW"), ("GETHOSTINPUT", "TARVANE_HOST_INPUT")):
            getattr(self.library, routine).restype = ctypes.POINTER(structure(text, name, known))
        self.library.GETSETUP.restype = ctypes.POINTER(Real)
        for routine in ("GETFLANGERESULTS", "GETSHELLRESULTS", "GETMDMTRESULTS"):
            block = getattr(self.library, routine)().contents
            assert block.bytes == ctypes.sizeof(block), f"{routine}: the block of the header has another length"
        self.records, self.stopped = b"", False
        self._take = TAKE(self._take_record)
        self._services = Services(version=1, report_fatal=STOP(lambda _, __: None),
                                  stop=STOP(lambda _, __: setattr(self, "stopped", True)))

    def _take_record(self, _, text, length):
        self.records += text[:length]
        return 0

    def call(self, routine, *arguments):
        """A float goes as a REAL, an int as an INTEGER, bytes as an address and its length, others as they are."""
        words = []
        for argument in arguments:
            if isinstance(argument, bytes):
                words += [argument, Integer(len(argument))]
            elif isinstance(argument, float):
                words.append(ctypes.byref(Real(argument)))
            elif isinstance(argument, int):
                words.append(ctypes.byref(Integer(argument)))
            elif isinstance(argument, (Real, Integer)):
                words.append(ctypes.byref(argument))
            else:
                words.append(argument)
        return getattr(self.library, routine)(*words)

    def begin(self, units, code, switches):
        """As at load; the seven switches of SET_GLOBALS_FROM_TVN."""
        self.stopped, self.records = False, b""
        self.call("RESET_ENGINE")
        self.call("SET_HOST_SERVICES", ctypes.byref(self._services))
        self.call("SET_GLOBALS_FROM_TVN", *switches)
        self.call("SET_MODULE_CODE", code)
        labels = b"".join(label.encode("latin-1").ljust(10) for label in units.labels)
        self.call("SET_UNITS", (Real * 11)(*units.factors), labels)
        Integer.in_dll(self.library, "METRICCONSTANTS_mp_G_NMETRIC_CONSTANT").value = int(units.metric)
        self.call("SET_METRIC_CONSTANTS")
        self.setup = self.library.GETSETUP()
        ctypes.cast(self.setup, ctypes.POINTER(Integer))[0] = code

    def report(self, routine, *arguments):
        """A call with its report on; its lines are in `records`."""
        unit, status = Integer(), Integer()
        self.call("GETNEXTUNIT", unit)
        self.call("OPENHOSTUNIT", unit, self._take, None, status)
        assert status.value == 0
        self.call("SET_IOUT", unit)
        for gate in ("SET_IWRITE", "SET_IWRTFL", "SET_IOSTEP", "SET_IWRTCA"):
            self.call(gate, 1)
        self.call(routine, *arguments)
        self.call("SET_IOUT", 0)
        self.call("CLOSEUNIT", unit)

    def flange(self, v, units, number):
        """FLANGE_CALC for a flange of a vessel; its record, its arguments and its block."""
        code, older = int(v["code"]), v["edition"] == 1
        self.begin(units, code, (0, 0, int(older), 0, 0, 1, 0))
        Integer.in_dll(self.library, "GLOBALS_mp_G_NUSE_OLD_DIV_2").value = int(older)
        self.call("SET_EDITION", int(code == 2 and not older), int(v["edition"] == 2))
        self.call("SET_YIELD", 0.0)
        self.call("SET_SWITCHES", 0, 0)
        self.call("SET_MATERIAL_SELECTION", 0, 0, 0, 0)
        row = self.library.GETELEMENTTABLES()[number - 1]
        for name in ("description", "from_node", "to_node", "material"):
            setattr(row, name, b" " * 16)
        row.heat_treatment, row.joint_efficiency = b"       0".ljust(16), v["E"]
        row.first_flag = row.second_flag = b" "
        record, text = (Real * 200)(), bytearray(b" " * 435)
        record[0] = number
        for key, element in RECORD.items():
            record[element - 1] = v.get(key, 0.0)
        record[68] = 0.0
        for key, offset in SLOTS.items():
            value = v.get(key, "" if offset in (0, 15, 30, 120) else 0.0)
            value = value if isinstance(value, str) else "Y" if value else "N"
            text[offset : offset + 15] = value.encode("latin-1").ljust(15)
        if v["channel_cover"]:
            record[9] = 0.0
        map_nc, cold, new, mawp, t_req = (Real() for _ in range(5))
        self.report(
            "FLANGE_CALC", record, bytes(text), 1, 2 if v["P"] < 0.0 else 1, map_nc, cold, new, mawp, t_req, 0,
            Integer(int(v["rigidity"])), code, number, number, v["E"], int(v["corroded_rigidity"]), 0, v["P"], 0, 0)
        found = {"mawp": mawp.value, "map_nc": map_nc.value, "t_req": t_req.value, "t_req_new": new.value,
                 "t_req_new_cold": cold.value}
        return record, found, self.library.GETFLANGERESULTS().contents

    def shell(self, v, units):
        """SHLINT and the corrosion at failure."""
        self.begin(units, int(v["code"]), (0, int(v["corroded_K"]), 0, 0, int(v["code"] == 2), 1, 0))
        shape, outside = int(v["kind"]), int("Do" in v)
        D, k = v["Do"] if outside else v["D"], v["tk"] if shape == 5 else v["k"]
        service, corroded = int(v["service"]), int(v["corroded_K"])
        none = [Real() for _ in range(5)]
        self.call(
            "SHLINT", v["P"], v["Sa"], v["S"], v["E"], shape, D, v["t"], v["ci"], k, Real(v["L"]), v["r"], v["alpha"],
            None, None, v["C"], v["D2"], *none[:4], int(v["material_class"]), v["T"], service, none[4], outside, Real(),
            v["Sy"], Real(), Real(), Integer(), Real(v["Sy_cold"] or v["Sy"]), v["Ut"], 0, *(0.0,) * 6, corroded, b"")
        block = self.library.GETSHELLRESULTS().contents
        copy = type(block)()
        ctypes.pointer(copy)[0] = block
        return copy

    def shell_failure(self, v, D, t, tk):
        """COMPUTE_FAILURE_CA_DIV1 after `shell`: of the shell and of a cone's knuckle."""
        own, knuckle = Real(), Real(-1.0)
        self.call(
            "COMPUTE_FAILURE_CA_DIV1", v["P"], D, v["E"], v["S"], t, v["k"], v["L"], v["r"], v["alpha"], v["C"], v["D2"],
            int(v["kind"]), own, int("Do" in v), tk, knuckle, *(0.0,) * 6, int(v["service"]), int(v["corroded_K"]))
        return own.value, knuckle.value

    def external(self, v, units):
        """SHLEXT; what it returns by name."""
        code, older = int(v["code"]), v["edition"] == 1
        by_stress = v["method"] == 2 or (v["method"] == 0 and code == 2 and not older)
        self.begin(units, code, (int(v["table_g"]), 0, int(older), int(by_stress), 0, 1, 0))
        self.call("SET_YIELD", v["Sy"])
        self.setup[47] = 1.0
        shape, outside = int(v["kind"]), int("Do" in v and v["kind"] != 3)
        names = ("maep", "tca", "slen", "Do_used", "A", "B", "fha", "failure_ca")
        out = {name: Real() for name in names}
        D = v["Do"] if "Do" in v else v["D"]
        self.report(
            "SHLEXT", v["P_external"], v["T"], v["chart"].encode().ljust(12), shape, D, v["t"], v["ci"], v["k"], v["L"],
            v["alpha"], v["length"], *(out[name] for name in names[:6]), 1, v["Dsmall"], v["cone_length"], outside,
            v["S"], v["Ut"], v["Sy"], int(v["material_class"]), out["fha"], out["failure_ca"], int(v["service"]))
        return {name: value.value for name, value in out.items()}, by_stress

    def mdmt(self, v, units):
        """MDMT_ELEMENT of an element without a material of the files."""
        code = int(v["code"])
        older, current = int(code == 2 and v["edition"] == 1), int(code == 2 and v["edition"] == 0)
        reductions = int(v["reductions"])
        self.begin(units, code, (0, 0, older, 0, 0, reductions, 0))
        self.call("SET_MATERIAL_SELECTION", 0, 0, int(v["d2_class"]), 0)
        credit = int(not v["credit_floor"])
        self.call("SET_TOUGHNESS_SWITCHES", reductions, int(v["curve_tables"]), 0, 1, 0, credit, current)
        self.setup[57] = 1.0 if v["edition"] == 2 else 0.0
        host = self.library.GETHOSTINPUT().contents
        host.required_temperature[0].value = (b"%.7g" % v["MDMT"]).ljust(16)
        host.version_mark, host.impact_switches = b" " * 16, b"0000".ljust(16)
        for count in host.impact_counts:
            count.value = b"0".ljust(16)
        host.single_name, host.single_number = b" " * 16, b"0".ljust(16)
        self.call("READ_IMPACT_TABLE")
        t_min, mdmt, ug20, used = (Real() for _ in range(4))
        ratio, reduction = Real(v["pad_ratio"]), Real(v["pad_reduction"])
        self.call(
            "MDMT_ELEMENT", int(v["curve"]), v["tg"], t_min, mdmt, ug20, v["E"], v["ci"], v["T"],
            v["tr"] if v["tr"] > 0.0 else -v["ratio"], Integer(), code, ratio, int(v["pwht"]), int(v["credit"]), v["ce"],
            int(v["ug20f"]), v["Sy"], used, b"", 0, 4, reduction, int(v["pad"]), v["tg_sr"], 1)
        return {"T_curve": t_min.value, "mdmt": mdmt.value, "T_ug20f": ug20.value, "ratio": ratio.value,
                "reduction": self.library.GETMDMTRESULTS().contents.reduction}
