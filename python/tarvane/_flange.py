"""Bolted flanges and flat covers."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from typing import Any, Mapping, Optional

from ._keys import InputError, Key, check_names, number, whole
from ._library import NO_VALUE, RECORD_ELEMENTS, Integer, Library, Real, ReportLine, text_field

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
KINDS = {"analyse": 1, "thickness": 2, "design": 3}
CODES = {"VIII-1": 1, "VIII-2": 2, "PD 5500": 3, "EN 13445": 4}
THREADS = {"TEMA": 1, "UNC": 2, "special": 3, "TEMA metric": 4, "BS 3643": 5, "SABS 1700": 6,
           "3P M30": 7, "user": 8}  # fmt: skip
SKETCHES = {"1a": 1, "1b": 2, "1c": 3, "1d": 4, "2": 5, "3": 6, "4": 7, "5": 8, "6": 9}

# Key and its element of the flange record.
_RECORD: dict[str, tuple[int, Key]] = {
    "type": (2, Key("flange type", default=None, choices=TYPES)),
    "kind": (3, Key("analyse, thickness: find the required one first, design: select the geometry",
                    default=1.0, choices=KINDS)),
    "P": (4, Key("design pressure, negative for external pressure", "psi", None)),
    "T": (5, Key("design temperature", "F")),
    "Sfo": (6, Key("flange allowable stress at design temperature", "psi", None)),
    "Sfa": (7, Key("flange allowable stress at ambient temperature", "psi", None)),
    "t": (8, Key("flange thickness", "in")),
    "ci": (9, Key("internal corrosion allowance", "in")),
    "B": (10, Key("flange inside diameter", "in")),
    "A": (11, Key("flange outside diameter", "in")),
    "Fod": (12, Key("flange face outside diameter", "in")),
    "Fid": (13, Key("flange face inside diameter", "in")),
    "Go": (14, Key("gasket outside diameter", "in")),
    "Gi": (15, Key("gasket inside diameter", "in")),
    "go": (16, Key("thickness of hub at small end", "in")),
    "g1": (17, Key("thickness of hub at large end", "in")),
    "h": (18, Key("length of hub", "in")),
    "Sb": (19, Key("bolt allowable stress at design temperature", "psi", None)),
    "Sa": (20, Key("bolt allowable stress at ambient temperature", "psi", None)),
    "C": (21, Key("diameter of bolt circle", "in")),
    "a": (22, Key("nominal bolt diameter", "in")),
    "threads": (23, Key("thread series", default=1.0, choices=THREADS)),
    "bolts": (24, Key("number of bolts")),
    "m": (25, Key("gasket factor")),
    "y": (26, Key("gasket design seating stress", "psi")),
    "sketch": (27, Key("facing sketch", default=1.0, choices=SKETCHES)),
    "column": (28, Key("column for gasket seating, 1 or 2", default=2.0)),
    "tg": (29, Key("gasket thickness", "in")),
    "w": (30, Key("flange face nubbin width", "in")),
    "lp": (31, Key("length of partition gasket", "in")),
    "material_class": (34, Key("reference number of the modulus table", default=1.0)),
    "D": (35, Key("diameter of the load reaction, long span", "in")),
    "d": (36, Key("diameter of the load reaction, short span", "in")),
    "dfAllow": (37, Key("allowed channel cover deflection", "in")),
    "L": (38, Key("perimeter along the centre of the bolts", "in")),
    "LjID": (39, Key("lap joint contact inside diameter", "in")),
    "LjOD": (40, Key("lap joint contact outside diameter", "in")),
    "n": (41, Key("splits of a ring flange: 0, 1, 2")),
    "tw": (42, Key("length of weld leg at back of ring", "in")),
    "mating_operating": (44, Key("mating flange operating bolt load", "lb")),
    "mating_seating": (45, Key("mating flange seating bolt load", "lb")),
    "mating_design": (46, Key("mating flange design bolt load", "lb")),
    "axial_force": (48, Key("axial force on the flange", "lb")),
    "bending_moment": (50, Key("bending moment on the flange", "ft-lb")),
    "root_area": (51, Key("root area of one bolt, special thread series", "sq in")),
    "tp": (52, Key("width of partition gasket", "in")),
    "density": (53, Key("material density", "lb/cu in", 0.2836)),
    "Dshell": (54, Key("inside diameter of the attached shell", "in")),
    "mPart": (55, Key("partition gasket factor")),
    "yPart": (56, Key("partition gasket design seating stress", "psi")),
    "sketch_part": (57, Key("partition gasket facing sketch", choices=SKETCHES)),
    "column_part": (58, Key("partition gasket column")),
    "Sn": (60, Key("allowable stress of the attached shell at design temperature", "psi")),
    "Sna": (61, Key("allowable stress of the attached shell at ambient temperature", "psi")),
    "ce": (63, Key("external corrosion allowance", "in")),
    "seating_rule": (73, Key("1: W = Sa * Ab; 0: the mean rule")),
}  # fmt: skip

# Keys of the call that are no elements of the record.
_CALL: dict[str, Key] = {
    "code": Key("design code", default=1.0, choices=CODES),
    "E": Key("joint efficiency", default=1.0),
    "rigidity": Key("1: evaluate the rigidity index"),
    "corroded_rigidity": Key("1: rigidity index at the corroded thickness"),
    "standard": Key("1: standard flange, no stress calculation"),
    "older_division_2": Key("1: VIII-2 by its older rules, code VIII-2 only"),
}

FLANGE_KEYS: dict[str, Key] = {**{name: key for name, (_, key) in _RECORD.items()}, **_CALL}
"""Numbers of a flange: key, meaning, unit."""

FLANGE_TEXTS: dict[str, tuple[int, str]] = {
    "material": (0, "flange material name"),
    "bolt_material": (15, "bolt material name"),
    "description": (30, "description of the flange"),
    "chart": (120, "external pressure chart of the material"),
}
"""Texts of a flange, cut at 15 characters, with their offset in the flange text."""

FLANGE_FLAGS: dict[str, tuple[int, str]] = {
    "external_loads": (45, "axial_force and bending_moment count; without it when one is given"),
    "mating_loads": (60, "the mating flange's loads count; without it when one is given"),
    "channel_cover": (75, "the cover of a channel, with a check of its deflection"),
    "use_corrosion": (90, "the corrosion allowances count; without it they do"),
    "partition_gasket": (105, "a partition gasket; without it when tp is given"),
}
"""Switches of a flange, True or False, with their offset in the flange text."""

_LABELS = {285: "in.", 300: "psig", 315: "in.", 330: "psi", 360: "lbf", 375: "ft-lbs",
           390: "in\xb2", 405: "F", 420: "lbm"}  # fmt: skip
_FIRST_FACTOR, _TEMPERATURE_OFFSET, _LAST_FACTOR = 100, 108, 110
_SLOT, _TEXT_LENGTH = 15, 435


@dataclass(frozen=True)
class FlangeResult:
    """Results of a flange; None where the engine has none."""

    mawp: Optional[float]  # maximum allowable working pressure (psi)
    map_nc: Optional[float]  # maximum allowable pressure, new and cold (psi)
    t_req: float  # required thickness (in); negative: minus the required bolt area (sq in)
    t_req_new_cold: float  # blind flanges (in)
    W: float  # design bolt load, gasket seating (lb)
    Wm1: float  # bolt load, operating (lb)
    Wm2: float  # bolt load, seating (lb)
    G: float  # gasket reaction diameter (in)
    Mop: float  # total moment for operation (in-lb)
    Matm: float  # total moment for gasket seating (in-lb)
    Ab: float  # actual bolt area (sq in)
    Am: float  # required bolt area (sq in)
    record: tuple[float, ...]  # the 200 elements as the call left them
    report: list[ReportLine]


def _text(data: Mapping[str, Any]) -> bytes:
    text = bytearray(b" " * _TEXT_LENGTH)

    def put(offset: int, value: str) -> None:
        text[offset : offset + _SLOT] = text_field(value, _SLOT)

    for name, (offset, _) in FLANGE_TEXTS.items():
        value = data.get(name, "")
        if not isinstance(value, str):
            raise InputError(f"{name}: {value!r} is no text")
        put(offset, value)
    loads = {
        "external_loads": "axial_force" in data or "bending_moment" in data,
        "mating_loads": any(f"mating_{kind}" in data for kind in ("operating", "seating", "design")),
        "use_corrosion": True,
        "partition_gasket": "tp" in data,
    }
    for name, (offset, meaning) in FLANGE_FLAGS.items():
        flag = number(name, Key(meaning), data.get(name, loads.get(name, False)))
        if flag not in (0.0, 1.0):
            raise InputError(f"{name}: {data[name]!r} is neither True nor False")
        put(offset, "Y" if flag else "N")
    for offset, label in _LABELS.items():
        put(offset, label)
    return bytes(text)


def _record(data: Mapping[str, Any]) -> ctypes.Array:
    record = (Real * RECORD_ELEMENTS)()
    record[0] = -1.0  # stand-alone form
    for name, (element, key) in _RECORD.items():
        if name in data:
            record[element - 1] = number(name, key, data[name])
        elif key.default is None:
            raise InputError(f"{name} is missing: {key.meaning}" + (f" ({key.unit})" if key.unit else ""))
        else:
            record[element - 1] = key.default
    for element in range(_FIRST_FACTOR, _LAST_FACTOR + 1):
        record[element - 1] = 0.0 if element == _TEMPERATURE_OFFSET else 1.0
    return record


def calculate(library: Library, data: Mapping[str, Any]) -> FlangeResult:
    """FLANGE_CALC in the stand-alone form, report to the line store."""
    check_names(data, {**FLANGE_KEYS, **FLANGE_TEXTS, **FLANGE_FLAGS})
    record, text = _record(data), _text(data)
    call = {name: number(name, key, data.get(name, key.default)) for name, key in _CALL.items()}
    map_nc, t_req_new_cold, t_req_new, mawp, t_req = (Real() for _ in range(5))
    rigidity = Integer(whole(call, "rigidity"))
    external = record[3] < 0.0
    library.call("SET_IWRITE", 1)
    library.call("SET_IWRTFL", 1)
    library.call("SET_IOUT", -1)
    library.call(
        "FLANGE_CALC", record, text, 1, 2 if external else 1, map_nc, t_req_new_cold, t_req_new,
        mawp, t_req, 0, rigidity, whole(call, "code"), 0, 0, call["E"],
        whole(call, "corroded_rigidity"), whole(call, "standard"), float(record[3]),
        whole(call, "older_division_2"), 0,
    )  # fmt: skip

    def pressure(value: Real) -> Optional[float]:
        return None if value.value == NO_VALUE else value.value

    loads = {name: record[120 + i - 1] for i, name in
             enumerate(("W", "Wm1", "Wm2", "G", "Mop", "Matm", "Ab", "Am"))}  # fmt: skip
    return FlangeResult(
        mawp=pressure(mawp), map_nc=pressure(map_nc), t_req=t_req.value,
        t_req_new_cold=t_req_new_cold.value, record=tuple(record), report=library.report_lines(),
        **loads,
    )  # fmt: skip
