"""Shells and heads under external pressure."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from typing import Any, Mapping, Optional, Union

from ._data import check_chart, check_modulus
from ._flange import CODES
from ._keys import InputError, Key, check_names, missing, read_numbers, read_text
from ._library import NO_VALUE, Integer, Library, Real, ReportLine
from ._shell import ELEMENTS, SERVICES, check_wall

_SETUP_CODE, _SETUP_PRINT = 1, 48
_CHART_WIDTH, _CHART_NAME = 12, 8

EXTERNAL_KEYS: dict[str, Key] = {
    "element": Key("kind of shell or head", default=None,
                   choices={name: n for name, n in ELEMENTS.items() if name != "flat"}),
    "code": Key("design code", default=1.0,
                choices={name: CODES[name] for name in ("VIII-1", "VIII-2")}),
    "P": Key("design external pressure; 0: the allowable one only", "psi", least=0.0),
    "T": Key("design temperature", "F", None),
    "D": Key("inside diameter, a cone's large end", "in", None, above=0.0),
    "t": Key("nominal thickness", "in", None, above=0.0),
    "c": Key("corrosion allowance", "in", least=0.0),
    "Ut": Key("mill under-tolerance", "in", least=0.0),
    "k": Key("aspect ratio D/2h", default=2.0, least=1.0, of=("elliptical",)),
    "L": Key("crown radius", "in", None, above=0.0, of=("torispherical",)),
    "alpha": Key("half apex angle", "degrees", None, above=0.0, most=89.9, of=("cone",)),
    "length": Key("stiffened length; of a cone by the charts its equivalent length", "in", least=0.0,
                  of=("cylinder", "cone"), needed=("cylinder",)),
    "Dsmall": Key("inside diameter of the small end", "in", least=0.0, of=("cone",)),
    "cone_length": Key("axial length", "in", None, above=0.0, of=("cone",)),
    "do_given": Key("D is the outside diameter", switch=True),
    "S": Key("allowable stress in tension", "psi", None, above=0.0),
    "Fy": Key("yield stress at design temperature, by which buckling stress goes", "psi", least=0.0),
    "material": Key("reference number of the modulus table", default=1.0, whole=True),
    "service": Key("service, for the minimum thickness", choices=SERVICES),
    "case_2286": Key("Code Case 2286 or Division 2, 4.4, in place of the charts", switch=True),
    "older_division_2": Key("VIII-2 by its older rules and the charts", switch=True),
    "table_g": Key("factor A of a cylinder or cone from Table G, where the data files have it", switch=True),
}  # fmt: skip
"""Numbers of a shell or head under external pressure."""

EXTERNAL_TEXTS: dict[str, str] = {
    "chart": "external pressure chart of the material, such as 'CS-2' [must be given]"
}
"""Texts of a shell or head under external pressure."""


@dataclass(frozen=True)
class ExternalResult:
    """Results of a shell or head under external pressure; None where the engine has none.

    maep     greatest allowable external pressure (psi)
    tca      required thickness with c and Ut (in); t without a pressure
    slen     longest stiffened length of a cylinder (in); of others the one given, or axial
    Do       outside diameter used (in); of a torispherical head the outside crown radius
    A        factor A, by the charts; else 0.0
    B        stress B, by the charts (psi); else 0.0
    Fha      allowable compressive stress, by buckling stress (psi); else 0.0
    fail_ca  corrosion at failure (in)
    report   lines of the report, a list of ReportLine
    """

    maep: float
    tca: float
    slen: Optional[float]
    Do: float
    A: float
    B: float
    Fha: float
    fail_ca: Optional[float]
    report: list[ReportLine]


def _check_method(data: Mapping[str, Any], v: Mapping[str, float]) -> None:
    """Raises InputError where the engine would quietly take another method."""
    division_2 = v["code"] == CODES["VIII-2"]
    if v["older_division_2"] and not division_2:
        raise InputError(f"older_division_2: {data['older_division_2']!r} has no effect on code 'VIII-1'")
    by_stress = v["case_2286"] or (division_2 and not v["older_division_2"])
    if by_stress and not v["Fy"] > 0.001:
        why = " for case_2286" if v["case_2286"] else " for code 'VIII-2'"
        if "Fy" not in data:
            raise missing("Fy", EXTERNAL_KEYS["Fy"], why)
        raise InputError(f"Fy: {data['Fy']!r} is no yield stress (psi){why}")
    cone_by_charts = v["element"] == ELEMENTS["cone"] and not by_stress
    if not v["length"] > 0.0 and (v["element"] == ELEMENTS["cylinder"] or cone_by_charts):
        if "length" not in data:
            raise missing("length", EXTERNAL_KEYS["length"], " for a cone by the charts")
        raise InputError(f"length: {data['length']!r} is not above 0 in")


def calculate(library: Library, data: Mapping[str, Any]) -> ExternalResult:
    """SHLEXT, report to the line store."""
    check_names(data, [*EXTERNAL_KEYS, *EXTERNAL_TEXTS])
    v = read_numbers(data, EXTERNAL_KEYS, "element")
    check_wall(data, v)
    _check_method(data, v)
    check_modulus(library, "material", int(v["material"]))
    chart = read_text(data, "chart", _CHART_NAME)
    if not chart:
        raise InputError(f"chart is missing: {EXTERNAL_TEXTS['chart']}")
    check_chart(library, chart.decode("latin-1"))
    field = ctypes.create_string_buffer(chart.ljust(_CHART_WIDTH), _CHART_WIDTH)

    library.setup_integer(_SETUP_CODE, int(v["code"]))
    library.setup_real(_SETUP_PRINT, 1.0)
    library.variable("GLOBALS_mp_G_NUSE_CASE2286").value = int(v["case_2286"])
    library.variable("GLOBALS_mp_G_NUSE_OLD_DIV_2").value = int(v["older_division_2"])
    library.variable("GLOBALS_mp_G_NUSE_TABLEG").value = int(v["table_g"])
    library.report_to_store()
    maep, slen, Do, A, B, Fha, fail_ca = (Real() for _ in range(7))
    tca = Real(v["t"])
    before = [Real(v["P"]), Real(v["T"])]
    behind: list[Union[Real, Integer]] = [
        Integer(int(v["element"])), Real(v["D"]), Real(v["t"]), Real(v["c"]), Real(v["k"]), Real(v["L"]),
        Real(v["alpha"]), Real(v["length"]), maep, tca, slen, Do, A, B, Integer(1), Real(v["Dsmall"]),
        Real(v["cone_length"]), Integer(int(v["do_given"])), Real(v["S"]), Real(v["Ut"]), Real(v["Fy"]),
        Integer(int(v["material"])), Fha, fail_ca, Integer(int(v["service"])),
    ]  # fmt: skip
    library.handle.SHLEXT(
        *[ctypes.byref(word) for word in before], field, Integer(_CHART_WIDTH),
        *[ctypes.byref(word) for word in behind],
    )  # fmt: skip

    def present(value: Real) -> Optional[float]:
        return None if value.value == NO_VALUE else value.value

    return ExternalResult(
        maep=maep.value, tca=tca.value, slen=present(slen), Do=Do.value, A=A.value, B=B.value,
        Fha=Fha.value, fail_ca=present(fail_ca), report=library.report_lines(),
    )  # fmt: skip
