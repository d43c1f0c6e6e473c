"""The rows of a sweep: columns of one length, a grid of them, or a file."""

from __future__ import annotations

import csv
import importlib
import itertools
import math
import numbers
import os
from array import array
from typing import Any, Iterable, Iterator, Mapping, Optional, Sequence, Union

from ._faults import Fault, InputError
from ._library import PathName

Inputs = Union[Mapping[str, Any], PathName]


def numpy() -> Any:
    """The module, where there is one."""
    try:
        return importlib.import_module("numpy")
    except ImportError:
        return None


def filled(np: Any, columns: Sequence[Any], rows: int) -> Any:
    """Rows by columns, one after the other; a column may be one number for all rows."""
    if np is not None:
        x = np.empty((rows, len(columns)))
        for i, column in enumerate(columns):
            x[:, i] = column
        return x
    flat = array("d", bytes(8 * rows * len(columns)))
    for i, column in enumerate(columns):
        flat[i :: len(columns)] = array("d", [column]) * rows if isinstance(column, float) else array("d", column)
    return flat


class Rows:
    """`count` rows of numbers by `names`. `scalar`: they were given without any list."""

    names: list[str]
    count: int
    scalar = False

    def blocks(self, size: int) -> Iterator[tuple[list[Any], int]]:
        """Columns of at most so many rows, and how many these are."""
        raise NotImplementedError


# ---- columns ---------------------------------------------------------------------------------------------------


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
    if shape is not None and hasattr(values, "to_numpy"):  # a column of pandas
        values = values.to_numpy()
    if shape is not None and getattr(getattr(values, "dtype", None), "kind", "") in "biuf":
        return values, int(shape[0])
    column = array("d", (_number(path, value, faults) for value in values))
    return column, len(column)


class Columns(Rows):
    """Each row has the numbers of its place in every column, or, of a grid, one of their combinations: the last
    column changes from row to row, the first one the least often."""

    def __init__(self, given: Mapping[str, Any], grid: bool) -> None:
        faults: list[Fault] = []
        self.names = list(given)
        columns = [_column(path, values, faults) for path, values in given.items()]
        self._columns = [column for column, _ in columns]
        self._lengths = [length for _, length in columns]
        lengths = [length for length in self._lengths if length is not None]
        self.scalar, self._grid = not lengths, grid
        self.count = math.prod(lengths) if grid else lengths[0] if lengths else 1
        first = next((path for path, length in zip(given, self._lengths) if length is not None), "")
        for path, length in zip(given, self._lengths):
            if not grid and length is not None and length != self.count:
                reason = f"{length} values, but {self.count} of {first}: as many are expected, or a scalar"
                faults.append(Fault(path, "", reason))
        if faults:
            raise InputError(faults)

    def blocks(self, size: int) -> Iterator[tuple[list[Any], int]]:
        for start in range(0, self.count, size):
            stop = min(start + size, self.count)
            yield self._block(start, stop), stop - start
        if self.count == 0:
            yield [0.0] * len(self.names), 0

    def _block(self, start: int, stop: int) -> list[Any]:
        np, stride, block = numpy(), self.count, []
        for column, length in zip(self._columns, self._lengths):
            if length is None:
                block.append(column)
            elif not self._grid:
                block.append(column[start:stop])
            else:
                stride //= length
                if np is not None:
                    block.append(np.asarray(column)[np.arange(start, stop) // stride % length])
                else:
                    block.append([float(column[row // stride % length]) for row in range(start, stop)])
        return block


# ---- files -----------------------------------------------------------------------------------------------------


def _is_number(cell: str) -> bool:
    try:
        float(cell)
    except ValueError:
        return False
    return True


class CsvRows(Rows):
    """A file of comma separated values: a line of paths, one of units, which can be left out, then the rows. It is
    read again for each use, a block at a time."""

    def __init__(self, path: PathName) -> None:
        self._path = os.fsdecode(path)
        with open(self._path, encoding="utf-8-sig", newline="") as file:
            records = csv.reader(file)
            paths = [cell.strip() for cell in next(records, [])]
            if not any(paths):
                raise InputError([Fault("", self._path, f"{self._path}: a line of paths is expected")])
            second = [cell.strip() for cell in next(records, [])]
            # A line without any number.
            self._with_units = any(second) and not any(map(_is_number, second))
            self.count = sum(1 for record in itertools.chain([second], records) if any(record)) - self._with_units
        units = second if self._with_units else []
        self.names = [f"{name} [{unit}]" if unit else name
                      for name, unit in itertools.zip_longest(paths, units[: len(paths)], fillvalue="")]  # fmt: skip

    def blocks(self, size: int) -> Iterator[tuple[list[Any], int]]:
        with open(self._path, encoding="utf-8-sig", newline="") as file:
            records = csv.reader(file)
            next(records, None)
            rows = ((records.line_num, record) for record in records if any(cell.strip() for cell in record))
            if self._with_units:
                next(rows, None)
            made = 0
            while block := list(itertools.islice(rows, size)):
                yield self._columns(block), len(block)
                made += len(block)
            if made == 0:
                yield [0.0] * len(self.names), 0

    def _columns(self, block: Sequence[tuple[int, Sequence[str]]]) -> list[Any]:
        columns = [array("d", bytes(8 * len(block))) for _ in self.names]
        faults = []
        for row, (line, record) in enumerate(block):
            if len(record) > len(columns):
                reason = f"{self._path}, line {line}: {len(record)} values, but {len(columns)} paths"
                faults.append(Fault("", "", reason))
                continue
            for i, (name, cell) in enumerate(itertools.zip_longest(self.names, record, fillvalue="")):
                text = cell.strip()
                if text and not _is_number(text):
                    reason = f"{self._path}, line {line}: {text!r} is no number"
                    faults.append(Fault(name, repr(text), reason))
                else:
                    columns[i][row] = float(text or "nan")  # an empty cell is a fault of its row alone
        if faults:
            raise InputError(faults)
        return list(columns)


def rows_of(inputs: Inputs, grid: bool) -> Rows:
    if isinstance(inputs, Mapping):
        return Columns(inputs, grid)
    try:
        path = os.fsdecode(inputs)
    except TypeError:
        reason = f"a dictionary or the path of a CSV file is expected, not {inputs!r}"
        raise InputError([Fault("inputs", repr(inputs), reason)]) from None
    if grid:
        raise InputError([Fault("grid", "True", f"{path}: a file has rows, no grid")])
    return CsvRows(path)
