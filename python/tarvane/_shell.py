"""Shells and heads under internal pressure."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Mapping, Optional

from ._keys import Key, check_names, read_numbers, whole
from ._library import Integer, Library, Real

ELEMENTS = {"cylinder": 1, "elliptical": 2, "torispherical": 3, "sphere": 4, "cone": 5, "flat": 6}
"""Elements of the shell routines by name."""

SHELL_KEYS: dict[str, Key] = {
    "element": Key("element", default=None, choices=ELEMENTS),
    "P": Key("design pressure", "psi", None),
    "T": Key("design temperature", "F"),
    "S": Key("allowable stress at design temperature", "psi", None),
    "Sa": Key("allowable stress at ambient temperature", "psi", None),
    "E": Key("joint efficiency", default=1.0),
    "D": Key("diameter, inside unless outside is 1; flat head: one span", "in", None),
    "D2": Key("second span of a non-circular flat head", "in"),
    "t": Key("nominal thickness", "in", None),
    "c": Key("corrosion allowance", "in"),
    "Ut": Key("mill under-tolerance", "in"),
    "k": Key("elliptical head: aspect ratio D/2h", default=2.0),
    "tk": Key("cone: thickness of the knuckle", "in"),
    "L": Key("torispherical head: crown radius", "in"),
    "r": Key("torispherical head, cone: knuckle radius", "in"),
    "alpha": Key("cone: half apex angle", "degrees"),
    "C": Key("flat head: attachment factor", default=0.3),
    "outside": Key("1: D is the outside diameter"),
    "service": Key("1 air, steam and water, 2 unfired steam boiler"),
    "material": Key("reference number of the modulus table", default=1.0),
    "Sy": Key("yield stress at design temperature; 0: no Appendix 1-4(f)", "psi"),
    "Sy_cold": Key("ambient yield stress", "psi"),
    "corroded_k": Key("1: K of an elliptical head by its corroded shape"),
}
"""Numbers of a shell or head: key, meaning, unit."""


@dataclass(frozen=True)
class ShellResult:
    """Results of a shell or head; None where the engine has none."""

    t_req: float  # required thickness without c, the code's minimum included (in)
    t_req_raw: float  # the same without the minimum (in)
    mawp: float  # maximum allowable working pressure, corroded (psi)
    map_nc: float  # maximum allowable pressure, new and cold (psi)
    stress: float  # membrane stress at P (psi)
    t_14f: Optional[float]  # required thickness by Appendix 1-4(f) (in)
    fail_ca: float  # corrosion at failure (in)
    fail_ca_knuckle: Optional[float]  # the same of a cone's knuckle (in)


def calculate(library: Library, data: Mapping[str, Any]) -> ShellResult:
    """SHLINT and COMPUTE_FAILURE_CA_DIV1."""
    check_names(data, SHELL_KEYS)
    v = read_numbers(data, SHELL_KEYS)
    element = whole(v, "element")
    k_or_tk = v["tk"] if element == ELEMENTS["cone"] else v["k"]
    L, Sy_cold = Real(v["L"]), Real(v["Sy_cold"])
    t_req, mawp, map_nc, stress, t_req_raw = (Real() for _ in range(5))
    t_14f, mawp_14f, map_nc_14f, status_14f = Real(), Real(), Real(), Integer()
    no_opening = (0.0,) * 6
    library.call(
        "SHLINT", v["P"], v["Sa"], v["S"], v["E"], element, v["D"], v["t"], v["c"], k_or_tk, L,
        v["r"], v["alpha"], None, None, v["C"], v["D2"], t_req, mawp, map_nc, stress,
        whole(v, "material"), v["T"], whole(v, "service"), t_req_raw, whole(v, "outside"), t_14f, v["Sy"],
        mawp_14f, map_nc_14f, status_14f, Sy_cold, v["Ut"], 0, *no_opening, whole(v, "corroded_k"), b"",
    )  # fmt: skip
    fail_ca, fail_ca_knuckle = Real(), Real()
    library.call(
        "COMPUTE_FAILURE_CA_DIV1", v["P"], v["D"], v["E"], v["S"], v["t"], v["k"], v["L"], v["r"],
        v["alpha"], v["C"], v["D2"], element, fail_ca, whole(v, "outside"), v["tk"], fail_ca_knuckle,
        *no_opening, whole(v, "service"), whole(v, "corroded_k"),
    )  # fmt: skip
    return ShellResult(
        t_req=t_req.value, t_req_raw=t_req_raw.value, mawp=mawp.value, map_nc=map_nc.value,
        stress=stress.value, t_14f=t_14f.value or None, fail_ca=fail_ca.value,
        fail_ca_knuckle=None if fail_ca_knuckle.value == -1.0 else fail_ca_knuckle.value,
    )  # fmt: skip
