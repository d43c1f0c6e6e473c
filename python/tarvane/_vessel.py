"""Requests in, results out."""

from __future__ import annotations

import json
import math
import numbers
import os
import textwrap
from pathlib import Path
from typing import Any, Callable, Iterable, Mapping, Optional, TypeVar, Union

from . import _sweep
from ._bar import Progress
from ._faults import Fault, InputError, failed, faults_of
from ._library import FAULTY, NO_DATA, OK, WANT_DRAWINGS, WANT_REPORT, WANT_RESULTS, Handle, PathName
from ._result import Result
from ._rows import Inputs
from ._sweep import Sweep, Written

Request = Union[Mapping[str, Any], PathName]
Function = TypeVar("Function", bound=Callable[..., Any])


def read_json(text: Union[str, bytes]) -> Any:
    """Keeps the sign of a zero, which a whole number of Python does not have."""
    return json.loads(text, parse_int=lambda digits: -0.0 if digits == "-0" else int(digits))


def plain(value: Any, path: str, faults: list[Fault]) -> Any:
    """A value in the form of JSON. Scalars of numpy, and arrays without dimensions, become the numbers they hold."""
    if getattr(value, "shape", None) == () and hasattr(value, "item"):
        value = value.item()
    if isinstance(value, Mapping):
        wrong = [name for name in value if not isinstance(name, str)]
        faults += [Fault(path, repr(name), f"the key {name!r} is no text") for name in wrong]
        return {name: plain(member, f"{path}.{name}" if path else str(name), faults) for name, member in value.items()}
    if isinstance(value, (list, tuple)):
        return [plain(member, f"{path}[{i}]", faults) for i, member in enumerate(value)]
    if value is None or isinstance(value, (str, bool, int)):
        return value
    if isinstance(value, numbers.Real):
        if math.isfinite(value):
            return float(value)
        faults.append(Fault(path, repr(value), f"{value!r} is not finite"))
    else:
        faults.append(Fault(path, repr(value), f"{value!r} ({type(value).__name__}) is no number, text or table"))
    return None


def _read(path: str) -> Any:
    """The tables of a TOML or JSON file."""
    text = Path(path).read_bytes()
    try:
        if path.lower().endswith(".json"):
            return text  # the library reads it, and finds faults that this json would pass over
        try:
            import tomllib
        except ImportError:
            reason = "a TOML file needs Python 3.11; give its tables as a dictionary"
            raise InputError([Fault("", path, reason)]) from None
        return tomllib.loads(text.decode("utf-8"))
    except ValueError as error:
        if isinstance(error, InputError):
            raise
        raise InputError([Fault("", path, f"{path}: {error}")]) from None


class _Text(str):
    """A text of help(), written when it is asked for: the keys are those of the library, which may be missing."""

    def expandtabs(self, tabsize: Any = 8) -> str:  # the first thing that inspect does with a text
        try:
            keys = told_keys(_default().keys())
        except OSError as error:
            keys = f"The keys are shown when the library is found: {error}"
        return f"{textwrap.dedent(str(self))}\n{keys}\n".expandtabs(tabsize)


def _with_keys(function: Function) -> Function:
    function.__doc__ = _Text("    " + (function.__doc__ or ""))
    return function


def told_keys(kinds: Mapping[str, Mapping[str, Mapping[str, Any]]]) -> str:
    """The keys of every kind of component with unit, meaning and choices."""
    lines = []
    for kind, keys in kinds.items():
        lines += ["", f"Keys of {kind}:"]
        width = max(map(len, keys)) + 2
        for name, key in keys.items():
            units = key.get("units", {})
            unit = f"({units['US']}; SI: {units['SI']}) " if units else ""
            choices = dict(reversed([(choice["number"], choice["name"]) for choice in key.get("choices", [])]))
            names = [choices[number] for number in sorted(choices)]
            told = f"{unit}{key['meaning']}" + (f": {', '.join(map(repr, names))}" if names else "")
            if key.get("default") and key["quantity"] not in ("choice", "temperature"):
                told += f" [{key['default']:g}]"
            lines.append(textwrap.fill(told, 100, initial_indent="    " + name.ljust(width),
                                       subsequent_indent=" " * (width + 4)))  # fmt: skip
    return "\n".join(lines)


class Vessel:
    """The vessel library with its data files.

    library      path of libtarvane_vessel.so (tarvane_vessel.dll); without it that of the TARVANE_LIBRARY
                 variable, a library in this package, or the one that the loader finds
    data_folder  folder of the data files; without it that of the TARVANE_DATA variable, the one in this package,
                 or the one that the library finds
    """

    def __init__(self, library: Optional[PathName] = None, data_folder: Optional[PathName] = None) -> None:
        if data_folder is not None and not os.path.isdir(data_folder):
            raise NotADirectoryError(f"data_folder: {os.fspath(data_folder)!r} is no folder")
        self._handle = Handle(library, data_folder)
        self._kinds: Optional[list[dict[str, Any]]] = None  # of the vocabulary, when they are needed
        # Without data files it calculates what needs none.
        if self._handle.opened not in (OK, NO_DATA):
            raise failed(self._handle.opened, self._handle.open_error)

    @property
    def version(self) -> str:
        return self._handle.version

    @property
    def missing(self) -> list[str]:
        """What is missing of the data files."""
        return [fault.reason for fault in faults_of(self._handle.open_error)]

    def close(self) -> None:
        self._handle.close()

    def __enter__(self) -> Vessel:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def schema(self, what: str) -> dict[str, Any]:
        """'input' or 'result': JSON Schema of a request or a result; 'keys': the vocabulary of every kind."""
        text, faults = self._handle.schema(what)
        if not text:
            raise failed(FAULTY, faults)
        schema: dict[str, Any] = json.loads(text)
        return schema

    def keys(self) -> dict[str, dict[str, dict[str, Any]]]:
        """What the vocabulary says about each key, by kind of component and name."""
        return {kind["name"]: {key["name"]: key for key in kind["keys"]} for kind in self.schema("keys")["kinds"]}

    def _vocabulary(self) -> list[dict[str, Any]]:
        if self._kinds is None:
            self._kinds = self.schema("keys")["kinds"]
        return self._kinds

    @_with_keys
    def calculate(self, request: Request, *, report: bool = True, drawings: bool = True) -> Result:
        """Calculates a request: a dictionary, or the path of a TOML or JSON file.

        {"units": "SI", "vessel": {"T": 150}, "shell": [{"kind": "cylinder", "P": 1.5, ...}]}: components by
        kind, each a list of dictionaries; what applies to all of them in "vessel" or beside it. "units" is "US",
        which is understood, "SI" or a dictionary of units. `report` and `drawings` may be left out to save time.

        Raises InputError with all faults of the request, EngineStopped when the engine can't go on, OSError
        when a file can't be read or a data file is missing.
        """
        tables = _tables(request)
        want = WANT_RESULTS + (WANT_REPORT if report else 0) + (WANT_DRAWINGS if drawings else 0)
        status, text = self._handle.calculate(tables, want)
        if status != OK:
            raise failed(status, text)
        return Result(read_json(text), self._vocabulary())

    def sweep(
        self, base: Request, inputs: Inputs, results: Iterable[str], *, grid: bool = False, progress: Progress = None,
        processes: int = 1, client: Any = None,
    ) -> Sweep:  # fmt: skip
        """Calculates a request with many values, without a report.

        {"flange[0].t": [1.0, 1.25, 1.5], "vessel.P": 100.0}: by path of a key, numbers (arrays of numpy, lists)
        or one that holds for all rows; a flag is 0 or 1, a choice its number. "flange[0].t [mm]": in that unit, else
        in those of the request, whose own value there is not looked at. With `grid` every combination is a row, and
        the last of the inputs changes the fastest. A CSV file is given by its path: a line of paths, one of units,
        which may be left out, and the rows. `results` are paths, too: "flange[0].results.mawp", a result;
        "flange[0].passed"; of the check that governs "flange[0].ratio" and "flange[0].governing"; "vessel.passed"
        and so on of all of them.

        `progress` is called now and then with the rows that are done and all of them; when it returns False the
        sweep ends early. True shows them on the standard error. With `processes` blocks of rows are calculated at
        the same time; with `client`, a Client of dask.distributed, on the workers of its cluster, which have one
        thread each. Calls with one Vessel take turns: another one calculates in the meantime.

        Raises as `calculate` does. A row that can't be calculated, one with nan in it for instance, has nan in its
        results, "fault" as "status" and the reason in "reason"; so has a row that ends its process.
        """
        swept = self._sweep(base, inputs, results, grid=grid, out=None, block=None, processes=processes,
                            progress=progress, client=client)  # fmt: skip
        assert isinstance(swept, Sweep)
        return swept

    def sweep_to_file(
        self, base: Request, inputs: Inputs, results: Iterable[str], out: PathName, *, grid: bool = False,
        progress: Progress = None, processes: int = 1, block: Optional[int] = None, client: Any = None,
    ) -> Written:  # fmt: skip
        """The same with the columns in a CSV file, `block` rows in memory at a time: for sweeps that are too large
        for it. The file is there when it is complete; after an early end it has the rows up to there."""
        written = self._sweep(base, inputs, results, grid=grid, out=out, block=block, processes=processes,
                              progress=progress, client=client)  # fmt: skip
        assert isinstance(written, Written)
        return written

    def _sweep(self, base: Request, inputs: Inputs, results: Iterable[str], **how: Any) -> Union[Sweep, Written]:
        text = _tables(base)
        keys = {kind["name"]: kind for kind in self._vocabulary()}
        return _sweep.run(self._handle, text, keys, inputs, results, **how)


def _tables(request: Request) -> bytes:
    """A request as JSON."""
    tables: Any = request if isinstance(request, Mapping) else _read(path_of(request))
    if not isinstance(tables, bytes):
        faults: list[Fault] = []
        tables = json.dumps(plain(tables, "", faults)).encode("utf-8", "surrogatepass")
        if faults:
            raise InputError(faults)
    if b"\0" in tables:
        raise InputError([Fault("", "", "a NUL character is no part of JSON")])
    return bytes(tables)


def path_of(request: Any) -> str:
    try:
        return os.fsdecode(request)
    except TypeError:
        reason = f"a dictionary or the path of a file is expected, not {request!r}"
        raise InputError([Fault("", repr(request), reason)]) from None


_opened: list[Vessel] = []


def _default() -> Vessel:
    """That of the whole process."""
    if not _opened:
        _opened.append(Vessel())
    return _opened[0]


@_with_keys
def run(request: Request, *, report: bool = True, drawings: bool = True) -> Result:
    """Calculates a request, a dictionary or the path of a TOML or JSON file, with the library that
    `Vessel()` finds; see there."""
    return _default().calculate(request, report=report, drawings=drawings)


def sweep(
    base: Request, inputs: Inputs, results: Iterable[str], *, grid: bool = False, progress: Progress = None,
    processes: int = 1, client: Any = None,
) -> Sweep:  # fmt: skip
    """Calculates a request with many values, with the library that `Vessel()` finds; see Vessel.sweep."""
    return _default().sweep(base, inputs, results, grid=grid, progress=progress, processes=processes,
                            client=client)  # fmt: skip


def sweep_to_file(
    base: Request, inputs: Inputs, results: Iterable[str], out: PathName, *, grid: bool = False,
    progress: Progress = None, processes: int = 1, block: Optional[int] = None, client: Any = None,
) -> Written:  # fmt: skip
    """The same with the columns in a CSV file; see Vessel.sweep_to_file."""
    return _default().sweep_to_file(base, inputs, results, out, grid=grid, progress=progress, processes=processes,
                                    block=block, client=client)  # fmt: skip
