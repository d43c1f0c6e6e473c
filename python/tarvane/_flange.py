"""Bolted flanges and flat covers."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from typing import Any, Iterable, Mapping, Optional

from ._data import check_bolt_size, check_modulus
from ._keys import InputError, Key, check_names, missing, number, read_numbers, read_text
from ._library import NO_VALUE, RECORD_ELEMENTS, Integer, Library, Real, ReportLine

TYPES = {
    "weld neck": 1,
    "slip on": 2,
    "ring": 3,
    "loose slip on": 4,
    "loose ring": 5,
    "lap joint": 6,
    "blind": 7,
    "reverse weld neck": 8,
    "loose reverse": 9,
}
COLUMNS = {"I": 1, "II": 2}
SPLITS = {"none": 0, "one": 1, "two": 2}
KINDS = {"analyse": 1, "thickness": 2, "design": 3}
CODES = {"VIII-1": 1, "VIII-2": 2, "PD 5500": 3, "EN 13445": 4}
THREADS = {"TEMA": 1, "UNC": 2, "special": 3, "TEMA metric": 4, "BS 3643": 5, "SABS 1700": 6,
           "3P M30": 7, "user": 8}  # fmt: skip
BOLT_SIZES = {"listed": 0, "nearest": 1}
SKETCHES = {"1a": 1, "1b": 2, "1c": 3, "1d": 4, "2": 5, "3": 6, "4": 7, "5": 8, "6": 9}

_NEED_HUB = ("weld neck", "reverse weld neck")
_BORED = tuple(name for name in TYPES if name != "blind")
_HUBBED = tuple(name for name in _BORED if name != "loose reverse")  # that has tShell for a hub
_RINGS = ("loose ring", "lap joint")
_COVER = ("blind",)
_COLUMNS_DIFFER = (5, 6, 7, 8)  # sketches 2 to 5; the others read neither column

# Names of the input files, and of the codes, for keys of here.
_OTHER_NAMES = {
    "g0": "go", "G0": "go", "bolting": "threads", "series": "threads", "facing": "sketch",
    "facing_part": "sketch_part", "splits": "n", "standard_flange": "standard", "edition": "older_division_2",
    "name": "description",
}  # fmt: skip

# Key and its element of the flange record.
_RECORD: dict[str, tuple[int, Key]] = {
    "type": (2, Key("flange type", default=None, choices=TYPES)),
    "kind": (3, Key("analyse the flange as it is, search for the thickness, or select the geometry",
                    default=1.0, choices=KINDS)),
    "P": (4, Key("design pressure, negative for external pressure", "psi", None)),
    "T": (5, Key("design temperature", "F", None)),
    "Sfo": (6, Key("flange allowable stress at design temperature", "psi", None, above=0.0)),
    "Sfa": (7, Key("flange allowable stress at ambient temperature", "psi", None, above=0.0)),
    "t": (8, Key("flange thickness; kind 'analyse' must have it", "in", above=0.0)),
    "ci": (9, Key("internal corrosion allowance", "in", least=0.0)),
    "B": (10, Key("flange inside diameter", "in", None, least=0.0, of=_BORED)),
    "A": (11, Key("flange outside diameter; all kinds but 'design' must have it", "in")),
    "Fod": (12, Key("flange face outside diameter", "in", None)),
    "Fid": (13, Key("flange face inside diameter", "in", None)),
    "Go": (14, Key("gasket outside diameter", "in", None)),
    "Gi": (15, Key("gasket inside diameter", "in", None)),
    "go": (16, Key("thickness of hub at small end", "in", of=_HUBBED, needed=_NEED_HUB)),
    "g1": (17, Key("thickness of hub at large end", "in", of=_HUBBED, needed=_NEED_HUB)),
    "h": (18, Key("length of hub", "in", of=_HUBBED, needed=_NEED_HUB)),
    "Sb": (19, Key("bolt allowable stress at design temperature", "psi", None, above=0.0)),
    "Sa": (20, Key("bolt allowable stress at ambient temperature", "psi", None, above=0.0)),
    "C": (21, Key("diameter of bolt circle; all kinds but 'design' must have it", "in")),
    "a": (22, Key("nominal bolt diameter; all kinds but 'design' must have it", "in")),
    "threads": (23, Key("thread series", default=1.0, choices=THREADS)),
    "bolts": (24, Key("number of bolts; all kinds but 'design' must have it", whole=True)),
    "m": (25, Key("gasket factor", default=None)),
    "y": (26, Key("gasket design seating stress", "psi", None, least=0.0)),
    "sketch": (27, Key("facing sketch of Table 2-5.2", default=1.0, choices=SKETCHES)),
    "column": (28, Key("column for gasket seating; sketches 2 to 5, whose columns differ, must have it",
                        default=1.0, choices=COLUMNS)),
    "tg": (29, Key("gasket thickness", "in", least=0.0)),
    "w": (30, Key("flange face nubbin width", "in", least=0.0)),
    "lp": (31, Key("length of partition gasket", "in", least=0.0)),
    "material_class": (34, Key("reference number of the modulus table", default=1.0, whole=True)),
    "D": (35, Key("diameter of the load reaction, long span", "in", of=_COVER)),
    "d": (36, Key("diameter of the load reaction, short span", "in", of=_COVER)),
    "dfAllow": (37, Key("allowed channel cover deflection; 0: by TEMA", "in", least=0.0, of=_COVER)),
    "L": (38, Key("perimeter along the centre of the bolts", "in", least=0.0, of=_COVER)),
    "LjID": (39, Key("lap joint contact inside diameter", "in", None, of=("lap joint",))),
    "LjOD": (40, Key("lap joint contact outside diameter", "in", None, of=("lap joint",))),
    "n": (41, Key("splits of a ring flange", choices=SPLITS, of=_RINGS, near="bolts")),
    "tw": (42, Key("length of weld leg at back of ring", "in", least=0.0)),
    "mating_operating": (44, Key("mating flange operating bolt load", "lb")),
    "mating_seating": (45, Key("mating flange seating bolt load", "lb")),
    "mating_design": (46, Key("mating flange design bolt load", "lb")),
    "axial_force": (48, Key("axial force on the flange", "lb")),
    "bending_moment": (50, Key("bending moment on the flange", "ft-lb")),
    "root_area": (51, Key("root area of one bolt, for threads 'special'", "sq in", least=0.0)),
    "tp": (52, Key("width of partition gasket", "in", least=0.0)),
    "density": (53, Key("material density", "lb/cu in", 0.2836, least=0.0)),
    "Dshell": (54, Key("inside diameter of the attached shell", "in", least=0.0)),
    "mPart": (55, Key("partition gasket factor")),
    "yPart": (56, Key("partition gasket design seating stress", "psi")),
    "sketch_part": (57, Key("partition gasket facing sketch", default=1.0, choices=SKETCHES)),
    "column_part": (58, Key("partition gasket column; its sketches 2 to 5 must have it", default=1.0,
                             choices=COLUMNS)),
    "Sn": (60, Key("allowable stress of the attached shell at design temperature", "psi", least=0.0)),
    "Sna": (61, Key("allowable stress of the attached shell at ambient temperature", "psi", least=0.0)),
    "ce": (63, Key("external corrosion allowance", "in", least=0.0)),
    "tShell": (71, Key("nominal thickness of the attached shell", "in", least=0.0,
                       needed=("loose reverse",))),
    "hub_shell_stress": (72, Key("check the small end of the hub with Sn", switch=True)),
    "seating_rule": (73, Key("W = Sa * Ab in place of the mean rule", switch=True)),
}  # fmt: skip

# Keys of the call that are no elements of the record.
_CALL: dict[str, Key] = {
    "code": Key("design code", default=1.0, choices=CODES),
    "E": Key("joint efficiency", default=1.0, above=0.0, most=1.0),
    "rigidity": Key("evaluate the rigidity index", switch=True),
    "corroded_rigidity": Key("rigidity index at the corroded thickness", switch=True),
    "standard": Key("standard flange, no stress calculation; hold P and its external loads against the "
                    "pressure rating, which nothing here does", switch=True),
    "bolt_size": Key("whether a has to be a size of the thread series, or stands for the next smaller one",
                     choices=BOLT_SIZES),
    "older_division_2": Key("code VIII-2 by its older rules", switch=True),
}

FLANGE_KEYS: dict[str, Key] = {**{name: key for name, (_, key) in _RECORD.items()}, **_CALL}
"""Numbers of a flange."""

FLANGE_TEXTS: dict[str, tuple[int, str]] = {
    "material": (0, "flange material name"),
    "bolt_material": (15, "bolt material name"),
    "description": (30, "description of the flange, whose first 15 characters the report shows; with ':' as "
                        "its 15th and last one the report of kinds 'thickness' and 'design' is of the given "
                        "thickness"),
    "chart": (120, "external pressure chart of the material"),
}  # fmt: skip
"""Texts of a flange with their offset in the flange text; up to 15 characters but for the description."""

FLANGE_FLAGS: dict[str, tuple[int, str]] = {
    "external_loads": (45, "axial_force and bending_moment count [True when one is given]"),
    "mating_loads": (60, "the mating flange's loads count [True when one is given]"),
    "channel_cover": (75, "the blind flange is the cover of a channel, with a check of its deflection"),
    "use_corrosion": (90, "the corrosion allowances count in thickness calculations [True when not given]"),
    "partition_gasket": (105, "a partition gasket [True when one of its keys is given]"),
}
"""Switches of a flange, True or False, with their offset in the flange text."""

_LABELS = {285: "in.", 300: "psig", 315: "in.", 330: "psi", 360: "lbf", 375: "ft-lbs",
           390: "in\xb2", 405: "F", 420: "lbm"}  # fmt: skip
_FIRST_FACTOR, _TEMPERATURE_OFFSET, _LAST_FACTOR = 100, 108, 110
_SLOT, _TEXT_LENGTH = 15, 435
_LONGEST_DESCRIPTION = 200


_PARTITION = ("lp", "tp", "mPart", "yPart", "sketch_part", "column_part")
_LOADS = ("axial_force", "bending_moment")
_MATING = ("mating_operating", "mating_seating", "mating_design")
_FLAG = Key("switch", switch=True)


@dataclass(frozen=True)
class FlangeResult:
    """Results of a flange; None where the engine has none.

    mawp            maximum allowable working pressure (psi)
    map_nc          maximum allowable pressure, new and cold (psi)
    t_req           required thickness (in); None of an analysed flange, but for a cover under internal
                    pressure, and of one that was refused; under external pressure the thickness used;
                    negative: minus the required bolt area (sq in), the bolts are too small
    t_req_new_cold  required thickness, new and cold, of a blind flange (in); else 0.0
    W               design bolt load, gasket seating (lb)
    Wm1             bolt load, operating (lb)
    Wm2             bolt load, seating (lb)
    G               gasket reaction diameter (in)
    Mop             total moment for operation (in-lb)
    Matm            total moment for gasket seating (in-lb)
    Ab              actual bolt area (sq in)
    Am              required bolt area (sq in)
    record          the 200 elements of the flange record as the call left them; element k at record[k - 1]
    report          lines of the report, a list of ReportLine

    Loads, moments and areas are 0.0 of a flange that was refused, of one whose bolts are too small, and, but
    for G, under external pressure. What makes a flange fail stands in the report.
    """

    mawp: Optional[float]
    map_nc: Optional[float]
    t_req: Optional[float]
    t_req_new_cold: float
    W: float
    Wm1: float
    Wm2: float
    G: float
    Mop: float
    Matm: float
    Ab: float
    Am: float
    record: tuple[float, ...]
    report: list[ReportLine]


def _description(data: Mapping[str, Any]) -> bytes:
    """The first characters: a text that goes on behind a colon in the last column has no flag there."""
    whole = read_text(data, "description", _LONGEST_DESCRIPTION)
    cut = whole[:_SLOT]
    return cut if cut == whole or cut[-1:] != b":" else cut[:-1]


def _has_partition(data: Mapping[str, Any]) -> bool:
    given = data.get("partition_gasket", any(name in data for name in _PARTITION))
    return bool(number("partition_gasket", _FLAG, given))


def _text(data: Mapping[str, Any], v: Mapping[str, float]) -> bytes:
    text = bytearray(b" " * _TEXT_LENGTH)

    def put(offset: int, value: bytes) -> None:
        text[offset : offset + _SLOT] = value.ljust(_SLOT)

    for name, (offset, _) in FLANGE_TEXTS.items():
        put(offset, _description(data) if name == "description" else read_text(data, name, _SLOT))
    given = {
        "external_loads": any(name in data for name in _LOADS),
        "mating_loads": any(name in data for name in _MATING),
        "use_corrosion": True,
        "partition_gasket": _has_partition(data),
    }
    for name, (offset, _) in FLANGE_FLAGS.items():
        flag = number(name, _FLAG, data.get(name, given.get(name, False)))
        put(offset, b"Y" if flag else b"N")
        if flag and name == "channel_cover" and v["type"] != TYPES["blind"]:
            given_type = repr(data["type"])
            raise InputError(f"{name}: {data[name]!r} has no effect on type {given_type}; it is of blind")
    for offset, label in _LABELS.items():
        put(offset, label.encode("latin-1"))
    return bytes(text)


def _check(data: Mapping[str, Any], v: Mapping[str, float]) -> None:
    """Raises InputError where the engine would take another value, or none."""

    def need(names: Iterable[str], why: str) -> None:
        for name in names:
            if name not in data:
                raise missing(name, FLANGE_KEYS[name], why)

    if v["kind"] == KINDS["analyse"]:
        need(["t"], " for kind 'analyse'")  # the engine would take 2 inches
    if v["kind"] != KINDS["design"]:
        need(["A", "C", "a", "bolts"], f" for kind {data.get('kind', 'analyse')!r}")
    if v["threads"] == THREADS["special"]:
        need(["root_area"], " for threads 'special'")
    elif "root_area" in data and v["threads"] < THREADS["special"]:
        raise InputError(
            f"root_area: {data['root_area']!r} has no effect on threads {data.get('threads', 'TEMA')!r}"
        )
    for sketch, column in (("sketch", "column"), ("sketch_part", "column_part")):
        in_force = column == "column" or _has_partition(data)
        if in_force and v[sketch] in _COLUMNS_DIFFER and column not in data:
            raise missing(column, FLANGE_KEYS[column], f" for {sketch} {data[sketch]!r}")
    if v["older_division_2"] and v["code"] != CODES["VIII-2"]:
        code = repr(data.get("code", "VIII-1"))
        raise InputError(f"older_division_2: {data['older_division_2']!r} has no effect on code {code}")


def _record(v: Mapping[str, float], partition: bool) -> ctypes.Array[Real]:
    record = (Real * RECORD_ELEMENTS)()
    record[0] = -1.0  # stand-alone form
    for name, (element, _) in _RECORD.items():
        record[element - 1] = v[name] if partition or name not in _PARTITION else 0.0
    for element in range(_FIRST_FACTOR, _LAST_FACTOR + 1):
        record[element - 1] = 0.0 if element == _TEMPERATURE_OFFSET else 1.0
    return record


def calculate(library: Library, data: Mapping[str, Any]) -> FlangeResult:
    """FLANGE_CALC in the stand-alone form, report to the line store."""
    check_names(data, [*FLANGE_KEYS, *FLANGE_TEXTS, *FLANGE_FLAGS], _OTHER_NAMES)
    v = read_numbers(data, FLANGE_KEYS, "type")
    _check(data, v)
    check_modulus(library, "material_class", int(v["material_class"]))
    if v["kind"] != KINDS["design"] and v["threads"] != THREADS["special"]:
        threads = next(name for name, n in THREADS.items() if n == v["threads"])
        nearest = v["bolt_size"] == BOLT_SIZES["nearest"]
        check_bolt_size(library, threads, int(v["threads"]), v["a"], nearest)
    record, text = _record(v, _has_partition(data)), _text(data, v)
    map_nc, t_req_new_cold, t_req_new, mawp, t_req = (Real() for _ in range(5))
    rigidity = Integer(int(v["rigidity"]))
    external = record[3] < 0.0
    library.report_to_store()
    library.call(
        "FLANGE_CALC", record, text, 1, 2 if external else 1, map_nc, t_req_new_cold, t_req_new,
        mawp, t_req, 0, rigidity, int(v["code"]), 0, 0, v["E"], int(v["corroded_rigidity"]),
        int(v["standard"]), float(record[3]), int(v["older_division_2"]), 0,
    )  # fmt: skip

    def pressure(value: Real) -> Optional[float]:
        return None if value.value == NO_VALUE else value.value

    analysed = v["kind"] == KINDS["analyse"]
    found = not analysed or (v["type"] == TYPES["blind"] and not external)
    required = (t_req.value or None) if found else None

    loads = {name: record[120 + i - 1] for i, name in
             enumerate(("W", "Wm1", "Wm2", "G", "Mop", "Matm", "Ab", "Am"))}  # fmt: skip
    return FlangeResult(
        mawp=pressure(mawp), map_nc=pressure(map_nc), t_req=required,
        t_req_new_cold=t_req_new_cold.value, record=tuple(record), report=library.report_lines(),
        **loads,
    )  # fmt: skip
