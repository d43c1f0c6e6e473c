"""The results of a calculation, by the names of the vocabulary."""

from __future__ import annotations

import difflib
from dataclasses import dataclass, field
from typing import Any, Iterable, Iterator, Mapping, NoReturn, Optional, Union

from . import _frame, _html

Number = Union[float, bool, str]  # a choice has the name of its value


class NoValue(LookupError):
    """A result without a value was read; the message says why there is none."""


@dataclass(frozen=True)
class Words:
    """What the vocabulary says of the results and checks of a kind of component, and the units of a request."""

    results: Mapping[str, Mapping[str, str]] = field(default_factory=dict)
    checks: Mapping[str, str] = field(default_factory=dict)
    units: Mapping[str, str] = field(default_factory=dict)

    def label(self, result: str) -> str:
        return self.results.get(result, {}).get("label", result)

    def unit(self, result: str) -> str:
        return self.units.get(self.results.get(result, {}).get("quantity", ""), "")


@dataclass(frozen=True)
class ReportLine:
    """A line of a report and its six style marks."""

    text: str
    marks: tuple[int, ...]

    def __str__(self) -> str:
        return self.text


@dataclass(frozen=True)
class Check:
    """A check: what is required (`demand`) compared with its `limit`, in `unit`. `ratio` is at most 1 where it
    passes; None without numbers. `state`: 'pass', 'fail', 'not asked', 'not made' or 'waived'. One that doesn't
    decide (good practice) may fail in a component that passes. `step` shows how the demand is found. `component` is
    the path of its component, 'flange[0]', `label` the check in words."""

    id: str
    paragraph: str
    state: str
    force: str
    waivable: bool
    demand: Optional[float] = None
    operator: str = ""
    limit: Optional[float] = None
    unit: str = ""
    ratio: Optional[float] = None
    case: str = ""
    reason: str = ""
    remark: str = ""
    step: str = ""
    component: str = ""
    label: str = ""

    @property
    def passed(self) -> bool:
        return self.state == "pass"


@dataclass(frozen=True)
class Governing:
    """The check nearest to its limit, or furthest beyond, and its component: 'flange[0]'."""

    component: str
    check: str


@dataclass(frozen=True)
class SummaryRow:
    """A value of the vessel and the component that governs it ('shell[0]'); None without one. `lacks` has the
    components whose own value is not known."""

    name: str
    value: Optional[float]
    component: Optional[str]
    note: str = ""
    lacks: tuple[str, ...] = ()
    label: str = ""
    unit: str = ""


@dataclass(frozen=True)
class UsedItem:
    """What was used of a data file, 'SA-516 70': its `status` ('published', 'approximate' ...), the `edition` of the
    code and the `source` of its figures, where they are known."""

    item: str
    status: str
    edition: str = ""
    source: str = ""


@dataclass(frozen=True)
class DataFile:
    """A data file that the calculation read."""

    file: str
    version: Optional[str]
    sha256: str
    used: tuple[UsedItem, ...] = ()


@dataclass(frozen=True)
class Input:
    """A value that was used: in the request's units, as it was given, and where it came from."""

    value: Any
    source: str
    given: Any = None


class Results:
    """Results by name: `results.mawp`, `results.designed.C`, `results["designed.C"]`. One without a value raises
    NoValue with the reason, which `why` has by name; `get` gives a default instead."""

    def __init__(self, values: Mapping[str, Optional[Number]], why: Mapping[str, str], table: str = "") -> None:
        self._values, self._why, self._table = values, why, table

    def _none(self, name: str, error: type[Exception]) -> NoReturn:
        near = difflib.get_close_matches(name, self, n=1) or [each for each in self if each.lower() == name.lower()]
        told = f"the nearest is {near[0]!r}" if near else f"results are {', '.join(self)}"
        raise error(f"{self._table}{name} is no result; {told}")

    def __getitem__(self, name: str) -> Number:
        if name not in self:
            self._none(name, KeyError)
        name = self._table + name
        value = self._values[name]
        if value is None:
            raise NoValue(f"{name} has no value: {self._why.get(name, '')}")
        return value if isinstance(value, (bool, str)) else float(value)

    def __getattr__(self, name: str) -> Any:
        if name.startswith("__") or self.__dict__.get("_values") is None:
            raise AttributeError(name)  # of a half-made copy
        if name in self:
            return self[name]
        full = self._table + name
        if any(known.startswith(full + ".") for known in self._values):
            return Results(self._values, self._why, full + ".")
        self._none(name, AttributeError)

    def get(self, name: str, default: Any = None) -> Any:
        if name not in self:
            self._none(name, KeyError)
        return default if self._values[self._table + name] is None else self[name]

    @property
    def why(self) -> dict[str, str]:
        """The reason of each result that has no value."""
        skipped = len(self._table)
        return {name[skipped:]: self._why.get(self._table + name[skipped:], "") for name in
                (known for known in self._values if known.startswith(self._table))
                if self._values[name] is None}  # fmt: skip

    def __iter__(self) -> Iterator[str]:
        return (name[len(self._table) :] for name in self._values if name.startswith(self._table))

    def __contains__(self, name: object) -> bool:
        return f"{self._table}{name}" in self._values

    def __dir__(self) -> list[str]:
        return sorted({*super().__dir__(), *(name.partition(".")[0] for name in self)})

    def __repr__(self) -> str:
        return f"Results({', '.join(f'{name}={self.get(name)!r}' for name in self)})"


class Component:
    """One flange, shell, element under external pressure or metal temperature of a result. Its `results` are its
    attributes, too: `component.mawp` is `component.results.mawp`, and raises NoValue without a value."""

    def __init__(self, data: Mapping[str, Any], path: str, words: Words = Words()) -> None:
        self._data, self._words = data, words
        self.path: str = path
        self.description: str = data["description"]
        self.verdict: str = data["verdict"]
        self.says: str = data["says"]
        self.results = Results(data["results"], data["why"])
        self.inputs = {
            name: Input(taken["value"], taken["from"], taken.get("given"))
            for name, taken in data["inputs"].items()
        }
        self.checks = [
            Check(**check, component=path, label=words.checks.get(check["id"], check["id"]))
            for check in data["checks"]
        ]
        """The worst first."""
        self.messages: list[str] = data["messages"]
        self.notes: list[str] = data["notes"]
        self.report = [ReportLine(line["text"], tuple(line["marks"])) for line in data.get("report", [])]
        self.drawings = _drawings(data)
        """SVG by name: 'section', and 'chart' of external pressure."""

    def __getattr__(self, name: str) -> Any:
        if name.startswith("_") or "results" not in self.__dict__:
            raise AttributeError(name)  # of a half-made copy
        return getattr(self.results, name)

    def __dir__(self) -> list[str]:
        return sorted({*super().__dir__(), *dir(self.results)})

    @property
    def passed(self) -> bool:
        return self.verdict == "pass"

    @property
    def governing(self) -> Optional[Check]:
        """The worst check that decides and was asked."""
        return next((check for check in self.checks if check.id == self._data["governing"]), None)

    @property
    def why(self) -> dict[str, str]:
        return self.results.why

    def to_dict(self) -> dict[str, Any]:
        return dict(self._data)

    def to_frame(self, what: str = "results") -> Any:
        """A pandas frame, as of the whole result."""
        return _frame.of([self], what)

    def _repr_html_(self) -> str:
        return _html.of_component(self)

    def __repr__(self) -> str:
        return f"<{self.path} {self.description!r}: {self.verdict}>"


def _drawings(data: Mapping[str, Any]) -> dict[str, str]:
    return {drawing["name"]: drawing["svg"] for drawing in data.get("drawings", [])}


class Result:
    """A calculated request: `flange`, `shell`, `external`, `mdmt` and any other kind of the library are lists of
    Component."""

    flange: list[Component]
    shell: list[Component]
    external: list[Component]
    mdmt: list[Component]

    def __init__(self, data: Mapping[str, Any], kinds: Iterable[Mapping[str, Any]]) -> None:
        """`kinds`: those of the vocabulary, Vessel.schema("keys")."""
        self._data = data
        units = {quantity: unit["label"] for quantity, unit in data.get("unit_system", {}).items()}
        self._words = {
            kind["name"]: Words(
                {result["name"]: result for result in kind["results"]},
                {check["id"]: check["label"] for check in kind["checks"]},
                units,
            )
            for kind in kinds
        }
        self.units: str = data["units"]
        self.program: str = data["program"]
        self.verdict: str = data["verdict"]
        self.says: str = data["says"]
        governing = data["governing"]
        self.governing = Governing(**governing) if governing else None
        rows: list[dict[str, Any]] = data.get("summary", [])
        self.summary = {
            row["name"]: SummaryRow(row["name"], row["value"], row["component"], row["note"], tuple(row["lacks"]),
                                    row["label"], row["unit"])  # fmt: skip
            for row in rows
        }
        """By name, `summary["mawp"]`; of a request with a `vessel`."""
        self.data: list[dict[str, Any]] = data["data"]
        self.data_edition: Optional[str] = data.get("data_edition")
        """Edition of the code that the data files are of; None where they name none."""
        self.figures: list[UsedItem] = [UsedItem(**each) for each in data.get("figures", [])]
        """Approximate figures of the library's own tables that were used."""
        self.not_covered: list[str] = data["not_covered"]
        self.drawings = _drawings(data)
        """SVG by name: 'outline', of a vessel whose components have elevations."""
        for kind, words in self._words.items():
            components = enumerate(data.get(kind, []))
            setattr(self, kind, [Component(each, f"{kind}[{i}]", words) for i, each in components])

    @property
    def data_files(self) -> list[DataFile]:
        """`data` by its names."""
        return [
            DataFile(each["file"], each["version"], each["sha256"], tuple(UsedItem(**item) for item in each["used"]))
            for each in self.data
        ]

    @property
    def components(self) -> list[Component]:
        return [component for kind in self._words for component in getattr(self, kind)]

    @property
    def passed(self) -> bool:
        return self.verdict == "pass"

    @property
    def checks(self) -> list[Check]:
        """Those of all components, one component after the other, of each the worst first."""
        return [check for component in self.components for check in component.checks]

    @property
    def report(self) -> list[ReportLine]:
        """The lines of all components, one after the other."""
        return [line for component in self.components for line in component.report]

    def to_dict(self) -> dict[str, Any]:
        """The result as the library gave it."""
        return dict(self._data)

    def to_frame(self, what: str = "results") -> Any:
        """A pandas frame with a row a result or, of "checks", a check: what `Results` and `Check` have, by the same
        names. A number without a value is nan, with the reason in "why"; of a result that is a flag or a choice
        "choice" has the name. Needs pandas."""
        return _frame.of(self.components, what)

    def _repr_html_(self) -> str:
        """Verdict, summary, checks and drawings, for a notebook."""
        return _html.of_result(self)

    def __repr__(self) -> str:
        return f"<Result {self.verdict}: {', '.join(map(repr, self.components))}>"
