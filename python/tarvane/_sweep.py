"""One request with many values: arrays in and arrays out, or rows of a file in and out."""

from __future__ import annotations

import csv
import importlib
import json
import math
import os
from dataclasses import dataclass
from typing import Any, Callable, Iterable, Iterator, Mapping, Optional, Sequence, Union

from ._bar import Progress, teller
from ._block import Block, Task, calculated, part_of, without_values
from ._cluster import Cluster
from ._faults import Fault, InputError, failed
from ._library import OK, Handle, PathName
from ._processes import Processes
from ._rows import Inputs, Rows, numpy, rows_of

OK_ROW, FAULT, NOT_MADE = "ok", "fault", "not made"
STATUS, REASON, GOVERNING, PASSED = "status", "reason", "governing", "passed"
_BLOCK = 10000  # rows of a file that are in memory at a time
_LEAST, _PARTS = 100, 8  # rows of a block of a process; blocks for each, so that they end together


class Sweep(Mapping[str, Any]):
    """The columns of a sweep by name: inputs, results, "status", "reason", "governing" and "passed".

    Numbers are arrays of numpy, or lists without it, with nan where there is no value; "flange[0].passed" is 1 or 0.
    What has names is a list of them, with None where there is none: a choice, the check that governs a component,
    the component that governs the vessel. "status" is "ok", "fault" or, of rows after an early end, "not made", and
    "reason" says of a fault what it is. "passed" is True or False of the whole request, "governing" the component
    and the check that are nearest to their limit or furthest beyond, "flange[0].bolt_area"; both are None for a row
    without results. Where all inputs are scalars each column is its one value.
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

    def to_frame(self) -> Any:
        """A DataFrame of pandas, a column each."""
        pandas = importlib.import_module("pandas")
        one = self.rows == 1 and not isinstance(self[STATUS], list)
        return pandas.DataFrame({name: [column] if one else column for name, column in self.items()})


@dataclass(frozen=True)
class Written:
    """A sweep in a file: its path, the rows in it, and how many of them have a fault."""

    path: str
    rows: int
    faulty: int


# ---- columns ---------------------------------------------------------------------------------------------------


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


def _components(request: Mapping[str, Any], kinds: Iterable[str]) -> Iterator[str]:
    """Those that are written, then, without an end, the metal temperatures that the vessel asks for."""
    written = 0
    known = set(kinds)
    for kind in filter(known.__contains__, request):  # as the library takes them
        tables = request[kind]
        count = 1 if isinstance(tables, Mapping) else len(tables)
        written = count if kind == "mdmt" else written
        yield from (f"{kind}[{i}]" for i in range(count))
    asks = isinstance(request.get("vessel"), Mapping) and "MDMT" in request["vessel"]
    if asks:
        parts = [request.get(kind, []) for kind in ("shell", "flange")]
        most = sum(1 if isinstance(tables, Mapping) else len(tables) for tables in parts)
        yield from (f"mdmt[{written + i}]" for i in range(most))


class _Table:
    """Columns of blocks, by the outputs that were asked for and those that the closing columns need."""

    def __init__(self, rows: Rows, request: bytes, kinds: Mapping[str, Any], results: Sequence[str]) -> None:
        self._inputs, self._results = rows.names, list(results)
        self._np = numpy()
        tables = json.loads(request)
        components = list(_components(tables if isinstance(tables, dict) else {}, kinds))
        self._written = [name for name in components if self._is_written(tables, name)]
        self.outputs = [*self._results, "vessel.passed", "vessel.governing",
                        *(f"{component}.governing" for component in self._written)]  # fmt: skip
        self._names = [_names_of(output, kinds, components) for output in self.outputs]

    @staticmethod
    def _is_written(tables: Mapping[str, Any], component: str) -> bool:
        kind, _, number = component.rstrip("]").partition("[")
        of_kind = tables.get(kind, [])
        return int(number) < (1 if isinstance(of_kind, Mapping) else len(of_kind))

    def _numbers(self, block: Block, values: Any, place: int, count: int) -> Any:
        return values[:, place].copy() if self._np is not None else list(values[place::count])

    def _output(self, block: Block, place: int) -> Any:
        column = self._numbers(block, block.y, place, len(self.outputs))
        names = self._names[place]
        return column if names is None else [None if math.isnan(value) else names[int(value)] for value in column]

    def columns(self, block: Block) -> dict[str, Any]:
        table = {name: self._numbers(block, block.x, i, len(self._inputs)) for i, name in enumerate(self._inputs)}
        for place, output in enumerate(self._results):
            table[output] = self._output(block, place)
        made = [FAULT if k else OK_ROW for k in block.faulty[: block.done]]
        table[STATUS] = made + [NOT_MADE] * (block.rows - block.done)
        table[REASON] = [str(block.faults[k - 1]) if k else "" for k in block.faulty]
        place = len(self._results)
        checks = {name: self._output(block, place + 2 + i) for i, name in enumerate(self._written)}
        table[GOVERNING] = [
            component and (f"{component}.{checks[component][row]}" if component in checks else component)
            for row, component in enumerate(self._output(block, place + 1))
        ]
        table[PASSED] = [None if math.isnan(value) else bool(value == 1.0) for value in self._output(block, place)]
        return table


def _joined(np: Any, tables: Sequence[Mapping[str, Any]]) -> dict[str, Any]:
    if len(tables) == 1:
        return dict(tables[0])
    joined: dict[str, Any] = {}
    for name, first in tables[0].items():
        parts = [table[name] for table in tables]
        joined[name] = [x for part in parts for x in part] if isinstance(first, list) else np.concatenate(parts)
    return joined


# ---- files -----------------------------------------------------------------------------------------------------


def _cell(value: Any) -> str:
    if value is None or (isinstance(value, float) and math.isnan(value)):
        return ""
    return {True: "true", False: "false"}[value] if isinstance(value, bool) else str(value)


class _CsvFile:
    """A file that is there when it is complete."""

    def __init__(self, path: PathName) -> None:
        self.path = os.fsdecode(path)
        self._part = self.path + ".part"
        self._file = open(self._part, "w", encoding="utf-8", newline="")
        self._csv = csv.writer(self._file, lineterminator="\n")
        self.rows = self.faulty = 0
        self._begun = False

    def add(self, table: Mapping[str, Any], rows: int) -> None:
        if not self._begun:
            self._csv.writerow(table)
            self._begun = True
        columns = [column[:rows] if isinstance(column, list) else column[:rows].tolist() for column in table.values()]
        self._csv.writerows([_cell(value) for value in row] for row in zip(*columns))
        self.rows += rows
        self.faulty += table[STATUS][:rows].count(FAULT)

    def end(self, complete: bool) -> None:
        self._file.close()
        if complete:
            os.replace(self._part, self.path)
        else:
            os.remove(self._part)


# ---- the sweep -------------------------------------------------------------------------------------------------


def _count(name: str, value: Any) -> int:
    if isinstance(value, bool) or not isinstance(value, int) or value < 1:
        raise InputError([Fault(name, repr(value), f"a whole number from 1 on is expected, not {value!r}")])
    return value


def _checked(results: Iterable[str]) -> list[str]:
    if isinstance(results, str):
        raise InputError([Fault("results", repr(results), "a list of paths is expected")])
    return list(results)


def _calculated(
    handle: Handle, task: Task, rows: Rows, size: int, several: Union[Processes, Cluster, None],
    tell: Optional[Callable[[int, int], bool]],
) -> Iterator[Block]:  # fmt: skip
    """The blocks in their order, up to the one that `tell` ends."""
    done, go_on = 0, True

    def report(made: int) -> bool:
        nonlocal go_on
        go_on = tell is None or tell(done + made, rows.count)
        return go_on

    if several is not None:
        for block in several.map(rows.blocks(size)):
            go_on = report(block.rows)
            done += block.rows
            yield block
            if not go_on:
                return
        return
    for columns, count in rows.blocks(size):
        block = calculated(handle, task, columns, count, report)
        done += block.done
        yield block
        if not go_on:
            return


def run(
    handle: Handle, request: bytes, kinds: Mapping[str, Any], inputs: Inputs, results: Iterable[str], *,
    grid: bool, out: Optional[PathName], block: Optional[int], processes: int, progress: Progress, client: Any,
) -> Union[Sweep, Written]:  # fmt: skip
    """`kinds`: what the vocabulary says of each."""
    wanted = _checked(results)
    processes = _count("processes", processes)
    rows = rows_of(inputs, grid)
    if client is not None and processes > 1:
        reason = f"{processes} processes of this machine, and the workers of a client: one of the two is expected"
        raise InputError([Fault("processes", repr(processes), reason)])
    table = _Table(rows, request, kinds, wanted)
    task = Task(request, rows.names, table.outputs)
    several: Union[Processes, Cluster, None] = None
    size = rows.count if out is None else _BLOCK
    if client is not None:
        several = cluster = Cluster(handle, task, client)
        size = min(size, cluster.rows_of_block(rows.count))
    elif processes > 1:
        several = Processes(handle, task, processes)
        size = min(size, max(_LEAST, math.ceil(rows.count / (processes * _PARTS))))
    size = max(1, size if block is None else _count("block", block))
    blocks = _calculated(handle, task, rows, size, several, teller(progress))
    if out is None:
        return _in_memory(rows, table, task, size, blocks)
    file = _CsvFile(out)
    complete = False
    try:
        for each in blocks:
            if each.status != OK:
                raise failed(each.status, each.text)
            file.add(table.columns(each), each.done)
        complete = True
    finally:
        file.end(complete)
    return Written(file.path, file.rows, file.faulty)


def _left(rows: Rows, task: Task, size: int, made: int) -> Iterator[Block]:
    """The rows after an early end."""
    for columns, count in rows.blocks(size):
        skipped = min(made, count)
        made -= skipped
        if skipped < count:
            yield without_values(task, part_of(columns, skipped, count), count - skipped)


def _in_memory(rows: Rows, table: _Table, task: Task, size: int, blocks: Iterable[Block]) -> Sweep:
    parts: list[Mapping[str, Any]] = []
    faults: dict[Fault, None] = {}
    made = 0
    for block in blocks:
        if block.status != OK:
            raise failed(block.status, block.text)
        parts.append(table.columns(block))
        faults.update(dict.fromkeys(block.faults))
        made += block.rows
    parts += [table.columns(block) for block in _left(rows, task, size, made)]
    columns = _joined(numpy(), parts)
    if rows.scalar:
        columns = {name: column[0] for name, column in columns.items()}
    return Sweep(columns, rows.count, list(faults))
