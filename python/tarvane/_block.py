"""A block of rows calculated by the library: arrays in, arrays out."""

from __future__ import annotations

import ctypes
import math
from array import array
from dataclasses import dataclass
from typing import Any, Callable, Optional, Sequence

from ._faults import Fault, faults_of
from ._library import OK, Handle
from ._rows import filled, numpy


@dataclass(frozen=True)
class Task:
    request: bytes
    names: Sequence[str]
    outputs: Sequence[str]


@dataclass
class Block:
    """`x` and `y`: rows by names and by outputs. `faulty`: for each row 0, or the number of its fault, from 1 on.
    `done`: rows that were calculated. `status`: of the call, with its faults in `text`."""

    rows: int
    x: Any
    y: Any
    faulty: Any
    faults: Sequence[Fault]
    done: int
    status: int = OK
    text: str = ""


def _address(np: Any, values: Any) -> Any:
    return ctypes.c_void_p(values.ctypes.data if np is not None else values.buffer_info()[0])


def part_of(columns: Sequence[Any], start: int, stop: int) -> list[Any]:
    return [column if isinstance(column, float) else column[start:stop] for column in columns]


def without_values(task: Task, columns: Sequence[Any], rows: int) -> Block:
    np = numpy()
    x = filled(np, columns, rows)
    count = rows * len(task.outputs)
    y = np.full((rows, len(task.outputs)), math.nan) if np is not None else array("d", [math.nan]) * count
    faulty = np.zeros(rows, dtype="i4") if np is not None else array("i", bytes(4 * rows))
    return Block(rows, x, y, faulty, (), 0)


def calculated(
    handle: Handle, task: Task, columns: Sequence[Any], rows: int,
    progress: Optional[Callable[[int], bool]] = None,
) -> Block:  # fmt: skip
    """`progress` is told the rows that are done; with False the rest is left."""
    np = numpy()
    block = without_values(task, columns, rows)
    raised: list[BaseException] = []

    def report(_: Any, done: int, _of: int) -> int:
        try:  # a signal is heard here, too
            return 1 if progress is not None and not progress(done) else 0
        except BaseException as error:  # to be raised again where Python called
            raised.append(error)
            return 1

    places = (_address(np, block.x), _address(np, block.y), _address(np, block.faulty))
    block.status, block.text, block.done = handle.sweep(
        task.request, list(task.names), list(task.outputs), rows, places, report
    )
    if raised:
        raise raised[0]
    if block.status == OK:
        block.faults = faults_of(block.text)
    return block
