"""Batches: the program plans them, writes their folders and sums them up; its processes here or the workers of a Dask
cluster calculate the items."""

from __future__ import annotations

import contextlib
import io
import json
import os
import platform
import shutil
import signal
import socket
import subprocess
import sys
import threading
from collections import deque
from dataclasses import dataclass
from pathlib import Path
from typing import IO, Any, Iterable, Iterator, Optional, Sequence, Union

from ._cluster import check_client, killed_worker, result_of, workers_of
from ._library import PACKAGE, PathName, path_text

_PROGRAM = "tarvane.exe" if sys.platform == "win32" else "tarvane"
_AHEAD, _LEAST, _MOST = 4, 32, 256  # items at a time: for each worker, and for those that join; sockets of a process
_WAYS = 4  # texts that a connection begins with
_SOON = 10.0  # seconds within which a process ends that has nothing more to do
_LAST_WORDS = 20  # lines
_ERROR = "tarvane: "  # begins what the program says of an error
_SEE = "Run with --help"
_TRIES = 2

_Stream = Union[IO[bytes], io.BufferedRWPair]
Input = tuple[bytes, bytes]  # name and text of a file
Answer = list[bytes]  # what goes back through the connection


def program_path() -> str:
    """That of the TARVANE_PROGRAM variable, of the tree that this package was installed with, or of the PATH."""
    named = os.environ.get("TARVANE_PROGRAM")
    if not named and PACKAGE.parent.name == "dist-packages":  # PREFIX/lib/python3/dist-packages
        beside = PACKAGE.parents[3] / "bin" / _PROGRAM
        named = str(beside) if beside.exists() else None
    found = shutil.which(named or _PROGRAM)
    if found is None:
        raise FileNotFoundError(
            f"the program {named or _PROGRAM!r}, which calculates batches, is not found; a wheel does not have it: name "
            "it by the variable TARVANE_PROGRAM, or install it where PATH leads to"
        )
    return os.path.abspath(found)


# ---- a text is its length and its bytes --------------------------------------------------------------------------


def send(stream: _Stream, *texts: bytes) -> None:
    for text in texts:
        stream.write(len(text).to_bytes(8, sys.byteorder) + text)
    stream.flush()


def receive(stream: _Stream) -> bytes:
    """Raises EOFError at the end."""
    head = stream.read(8)
    text = stream.read(int.from_bytes(head, sys.byteorder)) if len(head) == 8 else b""
    if len(head) < 8 or len(text) < int.from_bytes(head, sys.byteorder):
        raise EOFError
    return text


# ---- on a worker -------------------------------------------------------------------------------------------------


class _Relay:
    """The program, which calculates in a process of its own again, and outlasts it."""

    def __init__(self, ways: Sequence[bytes]) -> None:
        self.ways = ways
        program = program_path()
        self._process = subprocess.Popen([program, "batch-relay"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        try:
            difference = self._ask(*ways)
        except (EOFError, OSError):
            self.end()
            raise RuntimeError(f"{_here()}: {program} ended as it began") from None
        if difference:
            self.end()
            raise RuntimeError(f"{_here()}: {difference.decode('utf-8', 'replace')}")

    def _ask(self, *texts: bytes) -> bytes:
        assert self._process.stdin is not None and self._process.stdout is not None
        send(self._process.stdin, *texts)
        return receive(self._process.stdout)

    def calculate(self, file: bytes, text: bytes) -> list[bytes]:
        """The row; of each file of its results the extension and the bytes; an empty one."""
        assert self._process.stdout is not None
        answer = [self._ask(file, text)]
        while len(answer) % 2 or answer[-1]:
            answer.append(receive(self._process.stdout))
        return answer

    def end(self) -> None:
        self._process.kill()
        self._process.wait(_SOON)
        for pipe in (self._process.stdin, self._process.stdout):
            if pipe is not None:
                with contextlib.suppress(OSError):  # what was to be written
                    pipe.close()


_relays: list[_Relay] = []  # one or none
_turn = threading.Lock()


def _here() -> str:
    return f"the worker {platform.node()}, process {os.getpid()}"


def on_worker(ways: Sequence[bytes], inputs: Sequence[Input]) -> list[Answer]:
    with _turn:
        return [_answer(ways, *each) for each in inputs]


def _answer(ways: Sequence[bytes], file: bytes, text: bytes) -> Answer:
    for _ in range(_TRIES):
        if _relays and _relays[0].ways != ways:
            _relays.pop().end()
        if not _relays:
            _relays.append(_Relay(ways))
        try:
            return _relays[0].calculate(file, text)
        except (EOFError, OSError):
            _relays.pop().end()
    return without_result(f"{_TRIES} processes that were to calculate it ended")


def without_result(reason: str) -> Answer:
    return [b"", reason.encode("utf-8")]


# ---- on the client -----------------------------------------------------------------------------------------------


class _Gate:
    """Many go in together, or one alone."""

    def __init__(self) -> None:
        self._changed = threading.Condition()
        self._inside, self._closed = 0, False

    @contextlib.contextmanager
    def together(self) -> Iterator[None]:
        with self._changed:
            self._changed.wait_for(lambda: not self._closed)
            self._inside += 1
        try:
            yield
        finally:
            with self._changed:
                self._inside -= 1
                self._changed.notify_all()

    @contextlib.contextmanager
    def alone(self) -> Iterator[None]:
        with self._changed:
            self._changed.wait_for(lambda: not self._closed)
            self._closed = True
            self._changed.wait_for(lambda: self._inside == 0)
        try:
            yield
        finally:
            with self._changed:
                self._closed = False
                self._changed.notify_all()


class _Bridge:
    """Between the program, which has a connection for each item that is calculated, and the workers of a client."""

    def __init__(self, client: Any) -> None:
        check_client(client)
        if not hasattr(socket, "AF_UNIX"):
            raise OSError("client: the program takes its items from others on Linux alone")
        count = min(_MOST, max(_LEAST, _AHEAD * workers_of(client)))
        self.problem: Optional[BaseException] = None
        self._client, self._killed, self._gate = client, killed_worker(), _Gate()
        self._ended = False
        self._futures: set[Any] = set()
        pairs = [socket.socketpair() for _ in range(count)]
        self._mine, self.sockets = [pair[0] for pair in pairs], [pair[1] for pair in pairs]
        self._threads = [threading.Thread(target=self._serve, args=(mine,), daemon=True) for mine in self._mine]

    def start(self) -> None:
        """After the program, which has the other ends."""
        for other in self.sockets:
            other.close()
        for thread in self._threads:
            thread.start()

    def end(self) -> None:
        """After the program has ended."""
        self._ended = True
        self._hang_up()
        if self._futures and self._client.status == "running":
            with contextlib.suppress(OSError):
                self._client.cancel(list(self._futures))
        for thread in self._threads:
            if thread.ident is not None:
                thread.join(_SOON)
        for mine in (*self._mine, *self.sockets):
            mine.close()

    def _hang_up(self) -> None:
        for mine in self._mine:
            with contextlib.suppress(OSError):
                mine.shutdown(socket.SHUT_RDWR)

    def _serve(self, mine: socket.socket) -> None:
        try:
            with mine.makefile("rwb") as stream, contextlib.suppress(EOFError, ConnectionError):
                ways = [receive(stream) for _ in range(_WAYS)]
                while True:
                    item = receive(stream), receive(stream)
                    answer = self._answer(ways, item)
                    send(stream, *answer)
        except BaseException as problem:
            if not self._ended:
                self.problem = self.problem or problem
                self._hang_up()  # the program ends

    def _calculate(self, ways: Sequence[bytes], item: Input) -> Answer:
        future = self._client.submit(on_worker, ways, [item], pure=False)
        self._futures.add(future)
        try:
            answers: list[Answer] = result_of(self._client, future)
            return answers[0]
        finally:
            self._futures.discard(future)

    def _answer(self, ways: Sequence[bytes], item: Input) -> Answer:
        try:
            with self._gate.together():
                return self._calculate(ways, item)
        except self._killed:  # it may have waited at a worker that another one has ended
            pass
        with self._gate.alone():
            try:
                return self._calculate(ways, item)
            except self._killed:
                return without_result("the calculation ended its worker, and so each other one")


# ---- the batch ---------------------------------------------------------------------------------------------------


@dataclass(frozen=True)
class Batch:
    """What a batch has come to; its results are files in the folder."""

    folder: str
    exit: int  # of the program: the worst of the items
    summary: dict[str, Any]  # summary.json

    @property
    def rows(self) -> list[dict[str, Any]]:
        """Of the items, by their names."""
        rows: list[dict[str, Any]] = self.summary["rows"]
        return rows


def _paths(given: Union[PathName, Iterable[PathName]]) -> list[str]:
    if isinstance(given, (str, os.PathLike)):
        given = [given]
    return [path_text(f"paths[{i}]", each) for i, each in enumerate(given)]


def batch(
    paths: Union[PathName, Iterable[PathName]], out: PathName, *, jobs: Optional[int] = None, resume: bool = False,
    html: bool = False, strict: bool = False, data_folder: Optional[PathName] = None, progress: bool = False,
    client: Any = None,
) -> Batch:  # fmt: skip
    """Calculates input files, and the *.toml of folders, into the folder `out`: the command `tarvane batch`, whose
    journal, summary and options these are.

    `jobs` processes of this machine calculate, one a core without a number; with `client`, a Client of
    dask.distributed, the workers of its cluster, which have one thread each. With `progress` a line is written to the
    standard error now and then. An interrupt (Ctrl-C) finishes the items that are calculated and writes the summary
    before KeyboardInterrupt is raised; a second one leaves them out.

    Items that fail have their reasons in `Batch.rows`. Raises FileNotFoundError without the program, RuntimeError
    with what it says where the batch as a whole can't go on; what is done until then is kept for `resume`.
    """
    if client is not None and jobs is not None:
        raise ValueError(f"jobs: {jobs!r} processes of this machine, and the workers of a client: one of the two is expected")
    folder = path_text("out", out)
    command = [program_path(), "batch", "--out", folder]
    command += [] if jobs is None else ["--jobs", str(jobs)]
    command += [] if data_folder is None else ["--data", path_text("data_folder", data_folder)]
    command += [f"--{name}" for name, wanted in (("resume", resume), ("html", html), ("strict", strict)) if wanted]
    command += [] if progress else ["--quiet"]
    files = ["--", *_paths(paths)]
    if client is None:
        return _finished(folder, *_run(command + files, None))
    bridge = _Bridge(client)
    try:
        command += ["--connections", ",".join(str(each.fileno()) for each in bridge.sockets)]
        ended = _run(command + files, bridge)
    finally:
        bridge.end()
    if bridge.problem is not None:
        raise bridge.problem
    return _finished(folder, *ended)


def _run(command: Sequence[str], bridge: Optional[_Bridge]) -> tuple[int, list[str]]:
    """The exit status, and the last that was said."""
    words: deque[str] = deque(maxlen=_LAST_WORDS)
    process = subprocess.Popen(
        command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, encoding="utf-8",
        errors="replace", pass_fds=[] if bridge is None else [each.fileno() for each in bridge.sockets],
        start_new_session=True,
    )  # fmt: skip
    assert process.stderr is not None
    if bridge is not None:
        bridge.start()
    interrupted = False
    try:
        while True:
            try:
                for line in process.stderr:
                    words.append(line)
                    if not line.startswith(_ERROR) and "--quiet" not in command:
                        sys.stderr.write(line)
                process.wait()
                break
            except KeyboardInterrupt:  # the program is not in the group that a terminal interrupts
                interrupted = True
                process.send_signal(signal.SIGINT)
    finally:
        process.kill()
        process.stderr.close()
    if interrupted:
        raise KeyboardInterrupt
    return process.returncode, list(words)


def _finished(folder: str, status: int, words: Sequence[str]) -> Batch:
    errors = [line[len(_ERROR):].rstrip("\n") for line in words if line.startswith(_ERROR)]
    if words and words[-1].startswith(_SEE):  # of the options
        errors = [line.rstrip("\n") for line in words[:-1]]
    if status < 0:
        errors.append(f"the program was ended by signal {-status}; resume=True goes on")
    if errors:
        raise RuntimeError("\n".join(errors))
    summary = Path(folder, "summary.json").read_text("utf-8")
    return Batch(folder, status, json.loads(summary))
