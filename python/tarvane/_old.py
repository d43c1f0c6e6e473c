"""The functions of before, one release longer: their names and units of the one vocabulary's."""

from __future__ import annotations

import ctypes
import os
import threading
import warnings
from dataclasses import dataclass
from typing import Any, Mapping, NoReturn, Optional, Union

from ._faults import Fault, InputError
from ._library import ENGINE, PathName, library_path, load
from ._result import Component, ReportLine
from ._vessel import Vessel, plain

Real = ctypes.c_float
_LOADER = getattr(ctypes, "WinDLL", ctypes.CDLL)  # of the engine
NO_VALUE = Real(-1.0101).value

# By kind the key of each old name that differs.
NAMES = {
    "flange": {"go": "g0", "threads": "bolting", "sketch": "facing", "sketch_part": "facing_part", "bolts": "n",
               "standard": "standard_flange", "older_division_2": "edition"},
    "shell": {"element": "kind", "c": "ci", "outside": "Do", "material": "material_class",
              "material_name": "material", "corroded_k": "corroded_K"},
    "external": {"element": "kind", "P": "P_external", "c": "ci", "do_given": "Do", "Fy": "Sy",
                 "material": "material_class", "case_2286": "method", "older_division_2": "edition"},
}  # fmt: skip
# What was taken for a key that is not given. A material was a label: no value comes from its record.
_TAKEN: dict[str, dict[str, Any]] = {
    "flange": {"bolting": "TEMA", "facing": "1a", "density": 0.2836, "material_class": 1, "chart": "",
               "chart_yield": 0.0, "material_reference": 0, "p_number": 0},
    "shell": {"T": 0.0, "material_class": 1, "Sy": 0.0, "Sy_cold": 0.0},
    "external": {"P_external": 0.0, "material_class": 1},
}  # fmt: skip
_SHAPES: dict[Any, dict[str, Any]] = {"flat": {"C": 0.3}, "cone": {"Dsmall": 0.0}, 6: {"C": 0.3}, 5: {"Dsmall": 0.0}}
# Keys of which all are needed where one is given.
_TOGETHER = (("mating_operating", "mating_seating", "mating_design"), ("lp", "tp", "mPart", "yPart"), ("D", "d"))
_SPLITS = {"none": 0, "one": 1, "two": 2}
_CODES = {"VIII-1": 1, "VIII-2": 2, "PD 5500": 3, "EN 13445": 4}
ELEMENTS = {"cylinder": 1, "elliptical": 2, "torispherical": 3, "sphere": 4, "cone": 5, "flat": 6}


def _old(name: str, way: str) -> None:
    warnings.warn(f"tarvane.{name} ends with the next release: use {way}", DeprecationWarning, stacklevel=3)


def _refuse(path: str, value: Any, reason: str) -> NoReturn:
    raise InputError([Fault(path, repr(value), reason)])


def _single(value: Optional[float]) -> Optional[float]:
    """A result has the shortest decimal of its single; here it is the single."""
    return None if value is None else Real(value).value


@dataclass(frozen=True)
class Key:
    """A key of an old table: what it means, its unit and the numbers of its choices."""

    meaning: str
    unit: str = ""
    choices: Optional[Mapping[str, int]] = None


def tables(vessel: Vessel, name: str) -> Union[dict[str, Key], dict[str, str]]:
    """FLANGE_KEYS, FLANGE_TEXTS, FLANGE_FLAGS and so on, by the keys of the vessel library."""
    kind, _, what = name.lower().partition("_")
    old_names = {new: old for old, new in NAMES[kind].items() if new not in ("Do", "edition", "method")}
    keys: dict[str, Key] = {}
    for new, key in vessel.keys()[kind].items():
        flag, text = key["quantity"] == "flag" and "external" != kind != "shell", key["quantity"] == "text"
        if (flag, text) == (what == "flags", what == "texts"):
            choices = {choice["name"]: choice["number"] for choice in key.get("choices", [])}
            keys[old_names.get(new, new)] = Key(key["meaning"], key.get("units", {}).get("US", ""), choices or None)
    if what == "keys":
        return keys
    return {old: key.meaning for old, key in keys.items()}


class _Gone:
    _GONE = {
        "record": "read the results of tarvane.run, or drive the engine by its C surface",
        "fail_ca_knuckle": "fail_ca is the lesser one of a cone and its knuckle",
    }

    def __getattr__(self, name: str) -> NoReturn:
        raise AttributeError(f"{name!r} is no result; {self._GONE.get(name, 'see help')}")


@dataclass(frozen=True)
class FlangeResult(_Gone):
    """Results of a flange; None where there is none.

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
    report          lines of the report, a list of ReportLine

    Moments are those of the vessel library, in foot-pounds, times 12: the last bit may differ from the engine's.
    Loads, moments and areas are 0.0 for a flange that was refused, for one whose bolts are too small, and, but
    for G, under external pressure. There is no `record` of the engine any more.
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
    report: list[ReportLine]


@dataclass(frozen=True)
class ShellResult(_Gone):
    """Results of a shell or head under internal pressure; None where there is none.

    t_req      required thickness without c, the code's minimum included (in)
    t_req_raw  the same without the minimum (in)
    mawp       maximum allowable working pressure, corroded (psi)
    map_nc     maximum allowable pressure, new and cold (psi)
    stress     membrane stress at P (psi)
    t_14f      required thickness of a head by Appendix 1-4(f), with neither c nor Ut (in)
    fail_ca    corrosion at failure (in), of a cone that of its knuckle if it is less; the mill tolerance Ut
               counts now
    """

    t_req: Optional[float]
    t_req_raw: Optional[float]
    mawp: Optional[float]
    map_nc: Optional[float]
    stress: Optional[float]
    t_14f: Optional[float]
    fail_ca: Optional[float]


@dataclass(frozen=True)
class ExternalResult:
    """Results of a shell or head under external pressure; None where there is none.

    maep     greatest allowable external pressure, by the chart or by buckling stress (psi)
    tca      required thickness with c and Ut, by the same (in); t without a pressure
    slen     longest stiffened length of a cylinder under a pressure (in)
    Do       outside diameter used (in); of a torispherical head the outside crown radius
    A        factor A, by the charts; else 0.0
    B        stress B, by the charts (psi); else 0.0
    Fha      allowable compressive stress, by buckling stress (psi); else 0.0
    fail_ca  corrosion at failure under a pressure (in), of a head that by UG-33(a)(1) if it is less
    report   lines of the report, a list of ReportLine
    """

    maep: Optional[float]
    tca: Optional[float]
    slen: Optional[float]
    Do: Optional[float]
    A: float
    B: float
    Fha: float
    fail_ca: Optional[float]
    report: list[ReportLine]


class Engine:
    """As `Vessel`, for the old functions; for an old path of the engine's library the one beside it is used.

    flange(data), shell(data) and external(data) take the old keys, `tarvane.FLANGE_KEYS` and so on, or
    those of `Vessel.calculate` under the same names.
    """

    # The engine of `modulus` has its state, and its folder for good, in the process.
    _one_at_a_time = threading.Lock()
    _given_folders: dict[str, str] = {}

    def __init__(self, library: Optional[PathName] = None, data_folder: Optional[PathName] = None) -> None:
        _old("Engine", "tarvane.Vessel, or tarvane.run")
        self._vessel = Vessel(library, data_folder)
        self._engine = library_path(library, ENGINE)
        folder = self._vessel._handle.data_folder
        self._folder = "" if folder is None else os.path.abspath(folder)
        self._keys = self._vessel.keys()

    def flange(self, data: Mapping[str, Any]) -> FlangeResult:
        """One bolted flange or flat cover; see Engine for the keys, FlangeResult for the results."""
        _old("Engine.flange", 'Vessel.calculate({"flange": [...]})')
        if isinstance(data, Mapping) and "n" in data:
            _refuse("flange[0].n", data["n"], "the splits of a ring are splits now, and n is the number of bolts, "
                    "which has the old name bolts here")  # fmt: skip
        flange = self._calculated("flange", data)
        found = flange.results.get
        analysed = flange.inputs["kind"].value in ("analyse", 1) if "kind" in flange.inputs else True
        cover = flange.inputs["type"].value in ("blind", 7) and flange.inputs["P"].value >= 0.0
        required = None if analysed and not cover else found("t_req")
        short = [check.limit for check in flange.checks if check.id == "bolt_area" and check.state == "fail"]
        if required is None and not analysed and found("Am") is None and short and short[0] is not None:
            required = -short[0]
        loads = {name: Real(found(name, 0.0)).value for name in ("W", "Wm1", "Wm2", "G", "Ab", "Am")}
        moments = {name: Real(12.0 * Real(found(name, 0.0)).value).value for name in ("Mop", "Matm")}
        return FlangeResult(
            mawp=_single(found("mawp")), map_nc=_single(found("map_nc")), t_req=_single(required),
            t_req_new_cold=Real(found("t_req_new_cold", 0.0)).value, report=flange.report, **loads, **moments,
        )  # fmt: skip

    def shell(self, data: Mapping[str, Any]) -> ShellResult:
        """A shell or head under internal pressure; see Engine for the keys, ShellResult for the results."""
        _old("Engine.shell", 'Vessel.calculate({"shell": [...]})')
        results = self._calculated("shell", data, report=False).results
        names = {"t_req": "t_governing", "fail_ca": "failure_ca"}
        names.update({name: name for name in ("t_req_raw", "mawp", "map_nc", "stress", "t_14f")})
        return ShellResult(**{old: _single(results.get(new)) for old, new in names.items()})

    def external(self, data: Mapping[str, Any]) -> ExternalResult:
        """A shell or head under external pressure; see Engine for the keys, ExternalResult for the results."""
        _old("Engine.external", 'Vessel.calculate({"external": [...]})')
        element = self._calculated("external", data)
        found = element.results.get
        return ExternalResult(
            maep=_single(found("maep_chart")), tca=_single(found("tca_chart", found("t"))),
            slen=_single(found("slen")), Do=_single(found("Do_used")), A=Real(found("A", 0.0)).value,
            B=Real(found("B", 0.0)).value, Fha=Real(found("fha", 0.0)).value,
            fail_ca=_single(found("failure_ca")), report=element.report,
        )  # fmt: skip

    def modulus(self, temperature: float, reference: int = 1, code: Union[int, str] = "VIII-1",
                chart: str = "") -> float:  # fmt: skip
        """Elastic modulus in millions of psi at a temperature (F), of the codes 'VIII-1' and 'VIII-2' by the
        reference number of its table, of 'PD 5500' and 'EN 13445' by the material's external pressure chart.

        The vessel library has the moduli of a flange alone, E_cold and E_hot: here the engine is called through its
        own library, beside that of the vessel. Raises InputError where it has none.
        """
        _old("Engine.modulus", "the results E_cold and E_hot of a flange")
        faults: list[Fault] = []
        numbers = plain({"temperature": temperature, "reference": reference, "code": _CODES.get(str(code), code)}, "",
                        faults)  # fmt: skip
        for name, value in numbers.items():
            if not isinstance(value, (int, float)) or (name != "temperature" and value != int(value)):
                _refuse(name, value, f"{value!r} is no {'number' if name == 'temperature' else 'whole number'}")
        words = (Real(numbers["temperature"]), ctypes.c_int32(int(numbers["reference"])),
                 ctypes.c_int32(int(numbers["code"])))  # fmt: skip
        with self._one_at_a_time:
            engine = load(self._engine, _LOADER)
            if not self._folder and self._engine in self._given_folders:
                raise RuntimeError(f"another Engine gave the data folder {self._given_folders[self._engine]}, which "
                                   "can't be taken back: give data_folder to this one too")  # fmt: skip
            engine.RESET_ENGINE()
            if self._folder:
                self._given_folders[self._engine] = self._folder
                folder = os.fsencode(self._folder)
                for routine in (engine.SET_SYSTEM_DIR, engine.SET_MODULE_DIR):
                    routine(folder, ctypes.c_int32(len(folder)))
            engine.SET_CHART(chart.encode("latin-1"), ctypes.c_int32(len(chart)))
            engine.ASMEMOD.restype = Real
            result: float = engine.ASMEMOD(ctypes.byref(words[0]), *map(ctypes.byref, words[1:]))
            status = ctypes.c_int32()
            engine.MODULUS_STATUS(ctypes.byref(status))
        if status.value >= 4 or not result > 0.0:  # carbon steel stood in, or there is none
            _refuse("reference", reference, f"reference: {reference!r} has no modulus at {temperature!r} F")
        return result

    def _calculated(self, kind: str, data: Mapping[str, Any], report: bool = True) -> Component:
        if not isinstance(data, Mapping):
            _refuse(kind, data, f"a dictionary is expected, not {data!r} ({type(data).__name__})")
        request = {kind: [self._translated(kind, data)]}
        component: Component = getattr(self._vessel.calculate(request, report=report), kind)[0]
        return component

    def _translated(self, kind: str, data: Mapping[str, Any]) -> dict[str, Any]:
        """The keys of the vocabulary for old ones."""
        faults: list[Fault] = []
        given = dict(plain(data, f"{kind}[0]", faults))
        if faults:
            raise InputError(faults)
        for switch, key, value in (("older_division_2", "edition", "older"), ("case_2286", "method", "stress")):
            if given.pop(switch, False) and kind != "shell":
                given[key] = value
        if given.pop("outside" if kind == "shell" else "do_given", False) and kind != "flange":
            given["Do"] = given.pop("D", None)
        names = NAMES[kind]
        taken = {names.get(name, name): value for name, value in given.items()}
        for together in _TOGETHER if kind == "flange" else ():
            if any(name in taken for name in together):
                taken = {**dict.fromkeys(together, 0.0), **taken}
        shape = taken.get("kind") if kind != "flange" else None
        of_shape = {name: value for name, value in _SHAPES.get(shape, {}).items() if (name == "C") == (kind == "shell")}
        if taken.get("splits") in _SPLITS:
            taken["splits"] = _SPLITS[taken["splits"]]
        return {name: self._value(self._keys[kind].get(name), value)
                for name, value in {**_TAKEN[kind], **of_shape, **taken}.items()}  # fmt: skip

    @staticmethod
    def _value(key: Optional[Mapping[str, Any]], value: Any) -> Any:
        """A number where it may be a switch or a whole number now."""
        if key is None or not isinstance(value, (bool, int, float)):
            return value
        if key["quantity"] == "flag":
            return bool(value) if value in (0, 1) else value
        if key["name"] == "seating_rule":
            value = int(value)
        whole = not isinstance(value, bool) and key["quantity"] in ("choice", "whole number")
        return int(value) if whole and value == int(value) else value
