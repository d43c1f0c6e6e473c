"""Shells and heads under external pressure."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from typing import Any, Mapping, Optional

from ._flange import CODES
from ._keys import InputError, Key, check_names, read_numbers
from ._library import NO_VALUE, Library, Real, ReportLine, text_field
from ._shell import ELEMENTS

_SETUP_CODE, _SETUP_PRINT = 1, 48
_CHART_WIDTH = 12

EXTERNAL_KEYS: dict[str, Key] = {
    "element": Key("element", default=None,
                   choices={name: n for name, n in ELEMENTS.items() if name != "flat"}),
    "code": Key("design code, VIII-1 or VIII-2", default=1.0, choices=CODES),
    "P": Key("design external pressure", "psi"),
    "T": Key("design temperature", "F", None),
    "D": Key("inside diameter, a cone's large end", "in", None),
    "t": Key("nominal thickness", "in", None),
    "c": Key("corrosion allowance", "in"),
    "Ut": Key("mill under-tolerance", "in"),
    "k": Key("elliptical head: aspect ratio D/2h", default=2.0),
    "L": Key("torispherical head: crown radius", "in"),
    "alpha": Key("cone: half apex angle", "degrees"),
    "length": Key("stiffened length", "in"),
    "Dsmall": Key("cone: inside diameter of the small end", "in"),
    "cone_length": Key("cone: axial length", "in"),
    "do_given": Key("1: D is the outside diameter"),
    "S": Key("allowable stress in tension", "psi", None),
    "Fy": Key("yield stress at design temperature", "psi"),
    "material": Key("reference number of the modulus table", default=1.0),
    "service": Key("1 air, steam and water, 2 unfired steam boiler"),
    "case_2286": Key("1: Code Case 2286 or Division 2, 4.4, in place of the charts"),
}  # fmt: skip
"""Numbers of a shell or head under external pressure: key, meaning, unit; `chart` is a text."""


@dataclass(frozen=True)
class ExternalResult:
    """Results under external pressure; None where the engine has none."""

    maep: float  # greatest allowable external pressure (psi)
    tca: float  # required thickness with c and Ut (in)
    slen: Optional[float]  # longest stiffened length (in)
    Do: float  # outside diameter used (in)
    A: float  # factor A, by the charts
    B: float  # stress B (psi), by the charts
    Fha: float  # allowable compressive stress (psi), by buckling stress
    fail_ca: Optional[float]  # corrosion at failure (in)
    report: list[ReportLine]


def calculate(library: Library, data: Mapping[str, Any]) -> ExternalResult:
    """SHLEXT, report to the line store."""
    numbers = {name: value for name, value in data.items() if name != "chart"}
    check_names(numbers, EXTERNAL_KEYS)
    v = read_numbers(numbers, EXTERNAL_KEYS)
    chart = data.get("chart")
    if not isinstance(chart, str) or not chart.strip():
        raise InputError("chart is missing: external pressure chart of the material, such as 'CS-2'")
    field = ctypes.create_string_buffer(text_field(chart, _CHART_WIDTH), _CHART_WIDTH)

    library.setup_integer(_SETUP_CODE, int(v["code"]))
    library.setup_real(_SETUP_PRINT, 1.0)
    library.variable("GLOBALS_mp_G_NUSE_CASE2286").value = int(v["case_2286"])
    library.call("BEGIN_REPORT")
    library.call("SET_IWRITE", 1)
    library.call("SET_IWRTFL", 1)
    library.call("SET_IOUT", -1)
    maep, slen, Do, A, B, Fha, fail_ca = (Real() for _ in range(7))
    tca = Real(v["t"])
    library.handle.SHLEXT(
        *map(ctypes.byref, (Real(v["P"]), Real(v["T"]))), field, ctypes.c_int32(_CHART_WIDTH),
        *map(ctypes.byref, (
            ctypes.c_int32(int(v["element"])), Real(v["D"]), Real(v["t"]), Real(v["c"]), Real(v["k"]),
            Real(v["L"]), Real(v["alpha"]), Real(v["length"]), maep, tca, slen, Do, A, B,
            ctypes.c_int32(1), Real(v["Dsmall"]), Real(v["cone_length"]),
            ctypes.c_int32(int(v["do_given"])), Real(v["S"]), Real(v["Ut"]), Real(v["Fy"]),
            ctypes.c_int32(int(v["material"])), Fha, fail_ca, ctypes.c_int32(int(v["service"])))),
    )  # fmt: skip

    def present(value: Real) -> Optional[float]:
        return None if value.value == NO_VALUE else value.value

    return ExternalResult(
        maep=maep.value, tca=tca.value, slen=present(slen), Do=Do.value, A=A.value, B=B.value,
        Fha=Fha.value, fail_ca=present(fail_ca), report=library.report_lines(),
    )  # fmt: skip
