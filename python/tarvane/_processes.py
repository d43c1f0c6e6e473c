"""Blocks of a sweep in several processes, each with a library of its own."""

from __future__ import annotations

import contextlib
import os
import pickle
import subprocess
import sys
import threading
from collections import deque
from concurrent.futures import Future, ThreadPoolExecutor
from pathlib import Path
from typing import Any, Iterable, Iterator, Optional, Sequence

from ._block import Block, Task, part_of, without_values
from ._faults import Fault
from ._library import Handle


class _Died(Exception):
    """A process ended before it had answered."""


class _Process:
    def __init__(self, handle: Handle, task: Task) -> None:
        package = str(Path(__file__).absolute().parents[1])
        path = os.pathsep.join(filter(None, (package, os.environ.get("PYTHONPATH"))))
        self._process = subprocess.Popen(
            [sys.executable, "-m", f"{__package__}._worker"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            env={**os.environ, "PYTHONPATH": path},
        )  # fmt: skip
        try:
            problem = self._ask((handle.path, handle.data_folder, task))
        except _Died as died:
            raise RuntimeError(f"a process of the sweep ended as it began: {died}") from None
        if problem is not None:
            raise OSError(problem)

    def _ask(self, question: Any) -> Any:
        process = self._process
        assert process.stdin is not None and process.stdout is not None
        try:
            pickle.dump(question, process.stdin, protocol=5)
            process.stdin.flush()
            return pickle.load(process.stdout)
        except (EOFError, OSError, pickle.UnpicklingError):
            process.kill()
            code = process.wait()
            raise _Died(f"signal {-code}" if code < 0 else f"exit status {code}") from None

    def calculate(self, columns: Sequence[Any], rows: int) -> Block:
        block: Block = self._ask((columns, rows))
        return block

    def end(self) -> None:
        self._process.kill()
        self._process.wait()
        for pipe in (self._process.stdin, self._process.stdout):
            if pipe is not None:
                with contextlib.suppress(OSError):  # what was to be written
                    pipe.close()


class Processes:
    """Gives blocks in their order. A block whose process ends is split until the row is found that ends it; that row
    has a fault."""

    def __init__(self, handle: Handle, task: Task, count: int) -> None:
        self._handle, self._task, self._count = handle, task, count
        self._mine = threading.local()
        self._all: list[_Process] = []
        self._closed = False

    def _own(self) -> _Process:
        process: Optional[_Process] = getattr(self._mine, "process", None)
        if process is None:
            process = self._mine.process = _Process(self._handle, self._task)
            self._all.append(process)
            if self._closed:  # while it began: nobody else ends it
                process.end()
                raise _Died("the sweep has ended")
        return process

    def _calculate(self, columns: Sequence[Any], rows: int) -> list[Block]:
        process = self._own()
        try:
            return [process.calculate(columns, rows)]
        except _Died as died:
            self._all.remove(process)
            process.end()
            self._mine.process = None
            if self._closed:
                raise
            if rows > 1:
                half = rows // 2
                return self._calculate(part_of(columns, 0, half), half) + self._calculate(
                    part_of(columns, half, rows), rows - half
                )
            block = without_values(self._task, columns, rows)
            block.faults = [Fault("", "", f"the calculation ended its process: {died}")]
            block.faulty[0], block.done = 1, 1
            return [block]

    def calculate(self, columns: Sequence[Any], rows: int) -> list[Block]:
        """Without the others."""
        return self._calculate(columns, rows)

    def end(self) -> None:
        self._closed = True
        for process in list(self._all):
            process.end()

    def map(self, blocks: Iterable[tuple[Sequence[Any], int]]) -> Iterator[Block]:
        waiting: deque[Future[list[Block]]] = deque()
        with ThreadPoolExecutor(self._count) as threads:
            try:
                for columns, rows in blocks:
                    waiting.append(threads.submit(self._calculate, columns, rows))
                    if len(waiting) > 2 * self._count:
                        yield from waiting.popleft().result()
                while waiting:
                    yield from waiting.popleft().result()
            finally:
                for future in waiting:
                    future.cancel()
                self.end()
