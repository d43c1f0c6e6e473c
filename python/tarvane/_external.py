"""Shells and heads under external pressure."""

from __future__ import annotations

import ctypes
import re
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Mapping, Optional

from ._flange import CODES
from ._keys import InputError, Key, check_names, read_numbers, whole
from ._library import NO_VALUE, Library, Real, ReportLine, text_field
from ._shell import ELEMENTS

_SETUP_CODE, _SETUP_PRINT = 1, 48
_CHART_WIDTH, _CHART_NAME = 12, 8
_CHART_FILE = "ExtChartData.txt"

EXTERNAL_KEYS: dict[str, Key] = {
    "element": Key("element", default=None,
                   choices={name: n for name, n in ELEMENTS.items() if name != "flat"}),
    "code": Key("design code", default=1.0,
                choices={name: CODES[name] for name in ("VIII-1", "VIII-2")}),
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


def _charts(folder: str) -> list[str]:
    """Names of the charts of the data files; none when they lie where this package does not know."""
    try:
        text = Path(folder, _CHART_FILE).read_text(encoding="latin-1") if folder else ""
    except OSError:
        text = ""
    names = re.findall(r"^[^;\n]*?\[([^]\n]*)\]", text, re.MULTILINE)
    return [name.strip() for name in names[: names.index("END") if "END" in names else None]]


def calculate(library: Library, data: Mapping[str, Any]) -> ExternalResult:
    """SHLEXT, report to the line store."""
    numbers = {name: value for name, value in data.items() if name != "chart"}
    check_names(numbers, EXTERNAL_KEYS)
    v = read_numbers(numbers, EXTERNAL_KEYS)
    chart = data.get("chart")
    if not isinstance(chart, str) or not chart.strip():
        raise InputError("chart is missing: external pressure chart of the material, such as 'CS-2'")
    if len(chart.strip()) > _CHART_NAME:
        raise InputError(f"chart: {chart!r} has more than {_CHART_NAME} characters")
    chart = chart.strip()
    known = _charts(library.data_folder)
    if known and chart not in known:  # the engine would take CS-2
        raise InputError(f"chart: {chart!r} is none of {_CHART_FILE}: {', '.join(known)}")
    field = ctypes.create_string_buffer(text_field(chart, _CHART_WIDTH), _CHART_WIDTH)

    library.setup_integer(_SETUP_CODE, whole(v, "code"))
    library.setup_real(_SETUP_PRINT, 1.0)
    library.variable("GLOBALS_mp_G_NUSE_CASE2286").value = whole(v, "case_2286")
    library.call("BEGIN_REPORT")
    library.call("SET_IWRITE", 1)
    library.call("SET_IWRTFL", 1)
    library.call("SET_IOUT", -1)
    maep, slen, Do, A, B, Fha, fail_ca = (Real() for _ in range(7))
    tca = Real(v["t"])
    library.handle.SHLEXT(
        *map(ctypes.byref, (Real(v["P"]), Real(v["T"]))), field, ctypes.c_int32(_CHART_WIDTH),
        *map(ctypes.byref, (
            ctypes.c_int32(whole(v, "element")), Real(v["D"]), Real(v["t"]), Real(v["c"]), Real(v["k"]),
            Real(v["L"]), Real(v["alpha"]), Real(v["length"]), maep, tca, slen, Do, A, B,
            ctypes.c_int32(1), Real(v["Dsmall"]), Real(v["cone_length"]),
            ctypes.c_int32(whole(v, "do_given")), Real(v["S"]), Real(v["Ut"]), Real(v["Fy"]),
            ctypes.c_int32(whole(v, "material")), Fha, fail_ca, ctypes.c_int32(whole(v, "service")))),
    )  # fmt: skip

    def present(value: Real) -> Optional[float]:
        return None if value.value == NO_VALUE else value.value

    return ExternalResult(
        maep=maep.value, tca=tca.value, slen=present(slen), Do=Do.value, A=A.value, B=B.value,
        Fha=Fha.value, fail_ca=present(fail_ca), report=library.report_lines(),
    )  # fmt: skip
