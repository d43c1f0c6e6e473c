"""Shells and heads under internal pressure."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Mapping, Optional

from ._data import check_modulus, modulus_at
from ._keys import InputError, Key, check_names, read_numbers, read_text
from ._library import Integer, Library, Real

ELEMENTS = {"cylinder": 1, "elliptical": 2, "torispherical": 3, "sphere": 4, "cone": 5, "flat": 6}
"""Elements of the shell routines by name."""

SERVICES = {"none": 0, "air, steam and water": 1, "unfired steam boiler": 2}
"""Services with a minimum thickness of their own (UG-16(b))."""

SHELL_KEYS: dict[str, Key] = {
    "element": Key("kind of shell or head", default=None, choices=ELEMENTS),
    "P": Key("design pressure", "psi", None, above=0.0),
    "T": Key("design temperature, of the modulus that Appendix 1-4(f) takes", "F"),
    "S": Key("allowable stress at design temperature", "psi", None, above=0.0),
    "Sa": Key("allowable stress at ambient temperature", "psi", None, above=0.0),
    "E": Key("joint efficiency", default=1.0, above=0.0, most=1.0),
    "D": Key("diameter, inside unless outside is 1; flat head: one span", "in", None, above=0.0),
    "D2": Key("second span; 0: circular", "in", least=0.0, of=("flat",)),
    "t": Key("nominal thickness", "in", None, above=0.0),
    "c": Key("corrosion allowance", "in", least=0.0),
    "Ut": Key("mill under-tolerance", "in", least=0.0),
    "k": Key("aspect ratio D/2h", default=2.0, least=1.0, of=("elliptical",)),
    "tk": Key("thickness of the knuckle", "in", least=0.0, of=("cone",)),
    "L": Key("crown radius", "in", None, above=0.0, of=("torispherical",)),
    "r": Key("knuckle radius; 0: a cone without a knuckle", "in", least=0.0,
             of=("torispherical", "cone"), needed=("torispherical",)),
    "alpha": Key("half apex angle", "degrees", None, above=0.0, most=89.9, of=("cone",)),
    "C": Key("attachment factor", default=0.3, above=0.0, of=("flat",)),
    "outside": Key("D is the outside diameter", switch=True),
    "service": Key("service, for the minimum thickness", choices=SERVICES),
    "material": Key("reference number of the modulus table", default=1.0, whole=True),
    "Sy": Key("yield stress at design temperature; 0: no Appendix 1-4(f)", "psi", least=0.0),
    "Sy_cold": Key("ambient yield stress; Appendix 1-4(f) takes Sy for a smaller one", "psi", least=0.0),
    "corroded_k": Key("K of the head by its corroded shape", switch=True, of=("elliptical",)),
}  # fmt: skip
"""Numbers of a shell or head under internal pressure."""

SHELL_TEXTS: dict[str, str] = {
    "material_name": "material by its name in 'VIII-1_Matls_By_Table.txt'; the minimum thickness of air, "
    "steam and water is for the carbon and low alloy steels of that list",
}
"""Texts of a shell or head under internal pressure."""

_LONGEST_NAME = 40
_FORMED = (ELEMENTS["elliptical"], ELEMENTS["torispherical"])
_LEAST_YIELD = 1000.0  # of Appendix 1-4(f) (psi)
_VIII_1 = 1


@dataclass(frozen=True)
class ShellResult:
    """Results of a shell or head under internal pressure; None where the engine has none.

    t_req            required thickness without c, the code's minimum included (in)
    t_req_raw        the same without the minimum (in)
    mawp             maximum allowable working pressure, corroded (psi)
    map_nc           maximum allowable pressure, new and cold (psi)
    stress           membrane stress at P (psi)
    t_14f            required thickness of a head by Appendix 1-4(f), with neither c nor Ut (in); the
                     greater of it and t_req governs
    fail_ca          corrosion at failure (in); negative when t is below the minimum thickness
    fail_ca_knuckle  the same of a cone's knuckle (in)

    The engine writes no report for these.
    """

    t_req: float
    t_req_raw: float
    mawp: float
    map_nc: float
    stress: float
    t_14f: Optional[float]
    fail_ca: float
    fail_ca_knuckle: Optional[float]


def check_wall(data: Mapping[str, Any], v: Mapping[str, float]) -> None:
    """Raises InputError when the allowances leave nothing of the wall."""
    if not v["t"] - v["c"] - v["Ut"] > 0.0:
        raise InputError(
            f"t: of {data['t']!r} in the corrosion allowance c and the tolerance Ut leave nothing"
        )


def calculate(library: Library, data: Mapping[str, Any]) -> ShellResult:
    """SHLINT and COMPUTE_FAILURE_CA_DIV1."""
    check_names(data, [*SHELL_KEYS, *SHELL_TEXTS])
    v = read_numbers(data, SHELL_KEYS, "element")
    check_wall(data, v)
    check_modulus(library, "material", int(v["material"]))
    if v["element"] in _FORMED and v["Sy"] > _LEAST_YIELD:
        modulus_at(library, "material", int(v["material"]), v["T"], _VIII_1)
    name = read_text(data, "material_name", _LONGEST_NAME)
    if v["service"] == SERVICES["air, steam and water"] and not name:
        meaning = SHELL_TEXTS["material_name"]
        raise InputError(f"material_name is missing for service {data['service']!r}: {meaning}")
    element = int(v["element"])
    if element == ELEMENTS["torispherical"] and not v["r"] > 0.0:
        raise InputError(f"r: {data['r']!r} is not above 0 in")
    k_or_tk = v["tk"] if element == ELEMENTS["cone"] else v["k"]
    L, Sy_cold = Real(v["L"]), Real(v["Sy_cold"])
    t_req, mawp, map_nc, stress, t_req_raw = (Real() for _ in range(5))
    t_14f, mawp_14f, map_nc_14f, status_14f = Real(), Real(), Real(), Integer()
    no_opening = (0.0,) * 6
    outside, service, corroded_k = int(v["outside"]), int(v["service"]), int(v["corroded_k"])
    library.call(
        "SHLINT", v["P"], v["Sa"], v["S"], v["E"], element, v["D"], v["t"], v["c"], k_or_tk, L,
        v["r"], v["alpha"], None, None, v["C"], v["D2"], t_req, mawp, map_nc, stress,
        int(v["material"]), v["T"], service, t_req_raw, outside, t_14f, v["Sy"],
        mawp_14f, map_nc_14f, status_14f, Sy_cold, v["Ut"], 0, *no_opening, corroded_k, name,
    )  # fmt: skip
    fail_ca, fail_ca_knuckle = Real(), Real()
    library.call(
        "COMPUTE_FAILURE_CA_DIV1", v["P"], v["D"], v["E"], v["S"], v["t"], v["k"], v["L"], v["r"],
        v["alpha"], v["C"], v["D2"], element, fail_ca, outside, v["tk"], fail_ca_knuckle,
        *no_opening, service, corroded_k,
    )  # fmt: skip
    return ShellResult(
        t_req=t_req.value, t_req_raw=t_req_raw.value, mawp=mawp.value, map_nc=map_nc.value,
        stress=stress.value, t_14f=t_14f.value or None, fail_ca=fail_ca.value,
        fail_ca_knuckle=None if fail_ca_knuckle.value == -1.0 else fail_ca_knuckle.value,
    )  # fmt: skip
