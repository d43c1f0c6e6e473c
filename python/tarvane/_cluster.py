"""Blocks of a sweep on the workers of a Dask cluster, an engine each."""

from __future__ import annotations

import contextlib
import importlib
import json
import os
import platform
import time
from collections import deque
from concurrent.futures import CancelledError
from dataclasses import dataclass, replace
from typing import Any, Iterable, Iterator, Optional, Sequence

from ._block import Block, Task, part_of, without_values
from ._faults import Fault
from ._library import OK, WANT_RESULTS, Handle
from ._processes import Processes
from ._rows import filled, numpy

_LARGEST, _SMALLEST, _PARTS = 5000, 1000, 8  # rows of a block; blocks for each worker, so that they end together
_WAITING = 4  # blocks that a worker is given ahead
_PIECES = 16  # of a block that has ended workers
_LOOK = 2.0  # seconds after which it is looked what a block waits for
_WITHOUT_WORKERS, _WITHOUT_ANSWER = 60.0, 900.0  # seconds after which nothing is hoped for any more


@dataclass(frozen=True)
class _Origin:
    """What the rows come from: where it is, if the client's was named, and what must be the same everywhere."""

    library: Optional[str]
    data_folder: Optional[str]
    version: str
    data: Sequence[tuple[str, str]]
    numpy: bool

    def differs(self, other: _Origin) -> str:
        if self.version != other.version:
            return f"version {self.version} of the library, here it is {other.version}"
        if self.numpy != other.numpy:
            return "numpy, here there is none" if self.numpy else "no numpy, here there is one"
        if self.data != other.data:
            return "other data files: " + ", ".join(sorted({name for name, _ in {*self.data} ^ {*other.data}}))
        return ""


def _origin(handle: Handle, request: bytes) -> _Origin:
    """The data files are those that the request reads, where it can be calculated as it is."""
    status, text = handle.calculate(request, WANT_RESULTS)
    files = json.loads(text)["data"] if status == OK else []
    data = [(str(file["file"]), str(file["sha256"])) for file in files]
    return _Origin(handle.named, handle.data_folder, handle.version, data, numpy() is not None)


# ---- on a worker -----------------------------------------------------------------------------------------------

_engines: list[tuple[_Origin, Task, Processes]] = []  # one or none


def _engine(origin: _Origin, task: Task) -> Processes:
    """A process beside the worker: a row that ends it does not end the worker, which has blocks of its own to keep."""
    if _engines and _engines[0][:2] == (origin, task):
        return _engines[0][2]
    while _engines:
        _engines.pop()[2].end()
    handle = Handle(origin.library, origin.data_folder)
    try:
        difference = _origin(handle, task.request).differs(origin)
        if difference:
            raise RuntimeError(f"the worker {platform.node()}, process {os.getpid()}, has {difference}")
        _engines.append((origin, task, Processes(handle, task, 1)))
    finally:
        handle.close()  # its path is all that is needed on
    return _engines[0][2]


def on_worker(origin: _Origin, task: Task, columns: Sequence[Any], rows: int) -> list[Block]:
    """The inputs are known where the blocks go to."""
    return [replace(block, x=None) for block in _engine(origin, task).calculate(columns, rows)]


# ---- on the client ---------------------------------------------------------------------------------------------


def _distributed() -> Any:
    return importlib.import_module("distributed")


def killed_worker() -> Any:
    """What is raised for a task that has ended as many workers as Dask allows."""
    return importlib.import_module("distributed.scheduler").KilledWorker


def check_client(client: Any) -> None:
    if not isinstance(client, _distributed().Client):
        raise TypeError(f"client: a Client of dask.distributed is expected, not {client!r}")
    if client.asynchronous:
        raise TypeError("client: an asynchronous one is given; the results are waited for here")


def workers_of(client: Any) -> int:
    """How many there are; none that can't take part."""
    workers = client.scheduler_info()["workers"]
    for address, worker in workers.items():
        if worker["nthreads"] != 1:
            raise ValueError(
                f"client: the worker {address} has {worker['nthreads']} threads, but the engine calculates one row at "
                "a time in a process; start workers with one thread each (LocalCluster(threads_per_worker=1), "
                "dask worker --nthreads 1 --nworkers N)"
            )
        if address.startswith("inproc:"):
            raise ValueError(f"client: the worker {address} is in this process; start it with processes=True")
    return len(workers)


def result_of(client: Any, future: Any) -> Any:
    """Raises where none is to be expected any more."""
    begin = here = time.monotonic()
    while True:
        try:
            return future.result(_LOOK)
        except _distributed().TimeoutError:
            if future.done():  # it is the task's own, or came just now
                return future.result(_LOOK)
        except CancelledError:
            raise RuntimeError("client: the scheduler has ended, or has lost what it was given") from None
        now = time.monotonic()
        if client.scheduler_info()["workers"]:
            here = now
        elif now - here > _WITHOUT_WORKERS:
            raise RuntimeError(f"client: the cluster has had no worker for {_WITHOUT_WORKERS:.0f} seconds")
        if now - begin > _WITHOUT_ANSWER:
            raise RuntimeError(f"client: a worker has not answered for {_WITHOUT_ANSWER:.0f} seconds")


class Cluster:
    """Gives blocks in their order. A block whose worker ends is calculated by another one. One that has ended as many
    as Dask allows is split until the row is found that ends them; that row has a fault."""

    def __init__(self, handle: Handle, task: Task, client: Any) -> None:
        check_client(client)
        self._client, self._task = client, task
        self._workers = workers_of(client)
        self._origin = _origin(handle, task.request)
        self._killed = killed_worker()

    def rows_of_block(self, count: int) -> int:
        return min(_LARGEST, max(_SMALLEST, -(-count // (_PARTS * max(1, self._workers)))))

    def _send(self, columns: Sequence[Any], rows: int) -> Any:
        return self._client.submit(on_worker, self._origin, self._task, columns, rows, pure=False)

    def _received(self, future: Any, columns: Sequence[Any], rows: int) -> list[Block]:
        blocks: list[Block] = result_of(self._client, future)
        start = 0
        for block in blocks:
            part = part_of(columns, start, start + block.rows)
            block.x = filled(numpy(), part, block.rows)
            start += block.rows
        assert start == rows
        return blocks

    def _alone(self, columns: Sequence[Any], rows: int) -> list[Block]:
        """While nothing else of the sweep is calculated: a worker that ends is the fault of these rows."""
        try:
            return self._received(self._send(columns, rows), columns, rows)
        except self._killed:
            if rows > 1:
                step = -(-rows // _PIECES)
                pieces = [(start, min(start + step, rows)) for start in range(0, rows, step)]
                return [
                    block
                    for start, stop in pieces
                    for block in self._alone(part_of(columns, start, stop), stop - start)
                ]
            block = without_values(self._task, columns, rows)
            block.faults = [Fault("", "", "the calculation ended its worker, and so each other one that was given it")]
            block.faulty[0], block.done = 1, 1
            return [block]

    def map(self, blocks: Iterable[tuple[Sequence[Any], int]]) -> Iterator[Block]:
        waiting: deque[tuple[Any, Sequence[Any], int]] = deque()
        try:
            for columns, rows in blocks:
                waiting.append((self._send(columns, rows), columns, rows))
                if len(waiting) > _WAITING * max(1, self._workers):
                    self._workers = workers_of(self._client)  # some may have come
                    yield from self._first(waiting)
            while waiting:
                yield from self._first(waiting)
        finally:
            if self._client.status == "running":  # else there is nothing to cancel, and long waits for a scheduler
                with contextlib.suppress(OSError):
                    self._client.cancel([future for future, _, _ in waiting])

    def _first(self, waiting: deque[tuple[Any, Sequence[Any], int]]) -> list[Block]:
        future, columns, rows = waiting[0]
        try:
            received = self._received(future, columns, rows)
        except self._killed:  # it may have waited at a worker that another one has ended
            for other, _, _ in waiting:
                with contextlib.suppress(self._killed):
                    result_of(self._client, other)
            received = self._alone(columns, rows)
        waiting.popleft()
        return received
