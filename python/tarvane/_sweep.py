"""One request with many values: arrays in, arrays out."""

from __future__ import annotations

import ctypes
import importlib
import json
import math
import numbers
from array import array
from typing import Any, Callable, Iterable, Iterator, Mapping, Optional, Sequence

from ._faults import Fault, InputError, failed, faults_of
from ._library import OK, Handle

Progress = Callable[[int, int], Any]
OK_ROW, FAULT, NOT_MADE = "ok", "fault", "not made"


def _numpy() -> Any:
    """The module, where there is one."""
    try:
        return importlib.import_module("numpy")
    except ImportError:
        return None


class Sweep(Mapping[str, Any]):
    """The columns of a sweep by name: inputs, results, "status" and "reason".

    Numbers are arrays of numpy, or lists without it, with nan where there is no value; `passed` is 1 or 0. What
    has names is a list of them, with None where there is none: a choice, the check that governs a component, the
    component that governs the vessel. "status" is "ok", "fault" or, of rows after an early end, "not made", and
    "reason" says of a fault what it is. Where all inputs are scalars each column is its one value.
    """

    def __init__(self, columns: Mapping[str, Any], rows: int, faults: Sequence[Fault]) -> None:
        self._columns, self.rows, self.faults = columns, rows, tuple(faults)

    def __getitem__(self, name: str) -> Any:
        return self._columns[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self._columns)

    def __len__(self) -> int:
        return len(self._columns)

    def __repr__(self) -> str:
        return f"<Sweep of {self.rows} rows: {', '.join(self)}>"


def _number(path: str, value: Any, faults: list[Fault]) -> float:
    if getattr(value, "shape", None) == () and hasattr(value, "item"):
        value = value.item()
    if isinstance(value, numbers.Real):
        return float(value)
    faults.append(Fault(path, repr(value), f"{value!r} ({type(value).__name__}) is no number"))
    return math.nan


def _column(path: str, values: Any, faults: list[Fault]) -> tuple[Any, Optional[int]]:
    """Numbers, and how many; one that holds for all rows, and None."""
    if not isinstance(values, Iterable) or isinstance(values, (str, bytes)) or getattr(values, "shape", None) == ():
        return _number(path, values, faults), None
    shape = getattr(values, "shape", None)
    if shape is not None and len(shape) != 1:
        faults.append(Fault(path, "", f"an array of one dimension is expected, not of {len(shape)}"))
        return 0.0, None
    if shape is not None and getattr(getattr(values, "dtype", None), "kind", "") in "biuf":
        return values, int(shape[0])
    column = array("d", (_number(path, value, faults) for value in values))
    return column, len(column)


def _names_of(output: str, kinds: Mapping[str, Any], components: Sequence[str]) -> Optional[list[Optional[str]]]:
    """What the numbers of an output stand for, by number; None for a quantity."""
    component, _, what = output.partition(".")
    kind = kinds.get(component.partition("[")[0], {})
    if what == "governing" and component == "vessel":
        return list(components)
    if what == "governing":
        return [check["id"] for check in kind.get("checks", [])]
    for result in kind.get("results", []):
        if what == "results." + result["name"] and "choices" in result:
            names: list[Optional[str]] = [None] * (1 + max(choice["number"] for choice in result["choices"]))
            for choice in reversed(result["choices"]):
                names[choice["number"]] = choice["name"]
            return names
    return None


def _inputs(given: Mapping[str, Any]) -> tuple[list[Any], int, bool]:
    """Columns of one length, the length, and whether there are but scalars."""
    faults: list[Fault] = []
    columns, lengths = [], {}
    for path, values in given.items():
        column, length = _column(path, values, faults)
        columns.append(column)
        if length is not None:
            lengths[path] = length
    rows = next(iter(lengths.values()), 1)
    for path, length in lengths.items():
        if length != rows:
            reason = f"{length} values, but {rows} of {next(iter(lengths))}: as many are expected, or a scalar"
            faults.append(Fault(path, "", reason))
    if faults:
        raise InputError(faults)
    return columns, rows, not lengths


def _filled(np: Any, columns: Sequence[Any], rows: int) -> Any:
    """Rows by columns, one after the other."""
    if np is not None:
        x = np.empty((rows, len(columns)))
        for i, column in enumerate(columns):
            x[:, i] = column
        return x
    flat = array("d", bytes(8 * rows * len(columns)))
    for i, column in enumerate(columns):
        flat[i :: len(columns)] = array("d", [column]) * rows if isinstance(column, float) else array("d", column)
    return flat


def _address(np: Any, values: Any) -> Any:
    return ctypes.c_void_p(values.ctypes.data if np is not None else values.buffer_info()[0])


def _components(request: Mapping[str, Any], kinds: Iterable[str]) -> Iterator[str]:
    for kind in kinds:
        tables = request.get(kind, [])
        yield from (f"{kind}[{i}]" for i in range(1 if isinstance(tables, Mapping) else len(tables)))


def run(
    handle: Handle, request: bytes, kinds: Mapping[str, Any], given: Mapping[str, Any],
    results: Iterable[str], progress: Optional[Progress],
) -> Sweep:  # fmt: skip
    """`kinds`: what the vocabulary says of each."""
    if isinstance(results, str):
        raise InputError([Fault("results", repr(results), "a list of paths is expected")])
    outputs = list(results)
    columns, rows, scalar = _inputs(given)
    np = _numpy()
    x = _filled(np, columns, rows)
    y = np.full((rows, len(outputs)), math.nan) if np is not None else array("d", [math.nan]) * (rows * len(outputs))
    row_faults = np.zeros(rows, dtype="i4") if np is not None else array("i", bytes(4 * rows))
    raised: list[BaseException] = []

    def report(_: Any, done: int, of: int) -> int:
        try:  # a signal is heard here, too
            return 1 if progress is not None and progress(done, of) is False else 0
        except BaseException as error:  # to be raised again where Python called
            raised.append(error)
            return 1

    places = (_address(np, x), _address(np, y), _address(np, row_faults))
    status, text, done = handle.sweep(request, list(given), outputs, rows, places, report)
    if raised:
        raise raised[0]
    if status != OK:
        raise failed(status, text)
    faults = faults_of(text)
    table: dict[str, Any] = {}
    for i, path in enumerate(given):
        table[path] = x[:, i].copy() if np is not None else list(x[i :: len(columns)])
    components = list(_components(json.loads(request), kinds))
    for i, output in enumerate(outputs):
        column = y[:, i].copy() if np is not None else list(y[i :: len(outputs)])
        names = _names_of(output, kinds, components)
        if names is not None:
            column = [None if math.isnan(value) else names[int(value)] for value in column]
        table[output] = column
    table["status"] = [FAULT if k else OK_ROW for k in row_faults[:done]] + [NOT_MADE] * (rows - done)
    table["reason"] = [str(faults[k - 1]) if k else "" for k in row_faults]
    if scalar:
        table = {name: column[0] for name, column in table.items()}
    return Sweep(table, rows, faults)
