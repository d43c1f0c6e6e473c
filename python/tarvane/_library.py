"""The C surface: how the library is found, arguments by reference, the line store."""

from __future__ import annotations

import ctypes
import os
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Optional, Type, TypeVar, Union

NO_VALUE = ctypes.c_float(-1.0101).value
"""What the engine returns where there is no result."""

RECORD_ELEMENTS = 200
SETUP_ELEMENTS = 200
STORE_RECORDS = 750
STORE_WIDTH = 125

Real = ctypes.c_float
Integer = ctypes.c_int32
PathName = Union[str, "os.PathLike[str]"]
Argument = Union[
    float, int, bytes, "ctypes._SimpleCData[Any]", "ctypes.Array[Any]", ctypes.Structure, None
]
Word = TypeVar("Word", Real, Integer)

# Where the engine looks for its data unless the host says otherwise: selector, product and version of
# GET_SYSTEM_PATH.
_DATA_SELECTOR, _PRODUCT, _VERSION = 270, b"TARVANE", b"2024"
_PATH_WIDTH = 260


@dataclass(frozen=True)
class ReportLine:
    """A line of a report and its six style marks."""

    text: str
    marks: tuple[int, int, int, int, int, int]

    def __str__(self) -> str:
        return self.text


def path_text(name: str, given: PathName) -> str:
    """A path as text; an empty one would quietly become another."""
    try:
        path = os.fsdecode(given)
    except TypeError:
        raise TypeError(f"{name}: {given!r} is no path") from None
    if not path:
        raise ValueError(f"{name}: {given!r} is no path")
    return path


def library_path(given: Optional[PathName]) -> str:
    """The given path, else that of the TARVANE_LIBRARY variable, else a library beside this package."""
    named = os.environ.get("TARVANE_LIBRARY") if given is None else path_text("library", given)
    if named:
        # The loader looks for a name without a folder elsewhere than in the working folder.
        return os.path.abspath(named) if os.path.isfile(named) else named
    name = "tarvane.dll" if sys.platform == "win32" else "libtarvane.so"
    beside = Path(__file__).with_name(name)
    return str(beside) if beside.exists() else name


class Library:
    """Routines by their names; every argument goes by reference."""

    def __init__(self, path: Optional[PathName]) -> None:
        loader = getattr(ctypes, "WinDLL", ctypes.CDLL)
        found = library_path(path)
        self.folder = os.path.dirname(found)
        """Folder of the library; empty when the loader found it by itself."""
        self.data_folder = ""
        """Folder of the data files that was given to Engine; empty without one."""
        try:
            self.handle = loader(found)
        except OSError as error:
            raise OSError(
                f"the library {found!r} can't be loaded ({error}); give its path to Engine, or by the "
                "variable TARVANE_LIBRARY"
            ) from error
        try:
            self.handle.GETLINESCOMFLG.restype = ctypes.c_void_p
            self.handle.GETSETUP.restype = ctypes.c_void_p
            self.handle.ASMEMOD.restype = ctypes.c_float
        except AttributeError:
            raise OSError(f"{found} is not the tarvane library") from None

    def call(self, routine: str, *arguments: Argument) -> Any:
        """Calls a routine. A float becomes a REAL, an int an INTEGER, bytes an address and its length;
        ctypes values go by reference as they are, None as a null address."""
        words: list[Any] = []
        for argument in arguments:
            if argument is None:
                words.append(None)
            elif isinstance(argument, bytes):
                words += [argument, Integer(len(argument))]
            elif isinstance(argument, ctypes.Array):
                words.append(argument)
            elif isinstance(argument, float):
                words.append(ctypes.byref(Real(argument)))
            elif isinstance(argument, int):
                words.append(ctypes.byref(Integer(argument)))
            else:
                words.append(ctypes.byref(argument))
        return getattr(self.handle, routine)(*words)

    def variable(self, name: str) -> Integer:
        """An exported variable."""
        return Integer.in_dll(self.handle, name)

    def setup_integer(self, element: int, value: int) -> None:
        self._setup(Integer)[element - 1] = value

    def setup_real(self, element: int, value: float) -> None:
        self._setup(Real)[element - 1] = value

    def _setup(self, kind: Type[Word]) -> ctypes.Array[Word]:
        return (kind * SETUP_ELEMENTS).from_address(self.handle.GETSETUP())

    def data_file(self, name: str, beside_library: bool = False) -> Optional[str]:
        """The text of a data file from the folder where the engine looks for it; None when there is none."""
        folders = [self.folder] if beside_library else []
        folders.append(self._system_folder())
        for folder in [self.data_folder] if self.data_folder else folders:
            try:
                if folder:
                    return Path(folder, name).read_text(encoding="latin-1")
            except OSError:
                continue
        return None

    def _system_folder(self) -> str:
        path = ctypes.create_string_buffer(_PATH_WIDTH)
        self.handle.GET_SYSTEM_PATH(
            ctypes.byref(Integer(_DATA_SELECTOR)), _PRODUCT, Integer(len(_PRODUCT)), _VERSION,
            Integer(len(_VERSION)), path, Integer(_PATH_WIDTH),
        )  # fmt: skip
        return os.fsdecode(path.raw.rstrip(b" "))

    def report_to_store(self) -> None:
        """Begins a report, in the line store."""
        self.call("BEGIN_REPORT")
        self.call("SET_IWRITE", 1)
        self.call("SET_IWRTFL", 1)
        self.call("SET_IOUT", -1)

    def report_lines(self) -> list[ReportLine]:
        """What the line store holds."""
        count = Integer()
        self.call("LINE_COUNT", count)
        size = STORE_RECORDS * STORE_WIDTH
        store = (ctypes.c_char * size).from_address(self.handle.GETLINESCOMFLG()).raw
        records = (store[i * STORE_WIDTH : (i + 1) * STORE_WIDTH] for i in range(count.value))
        return [_line(record) for record in records]


def _line(record: bytes) -> ReportLine:
    end = record.rindex(0)  # behind the marks
    marks = record[end - 12 : end].decode("latin-1")
    text = record[4 : end - 12].decode("latin-1").rstrip()
    m1, m2, m3, m4, m5, m6 = (int(marks[i : i + 2]) for i in range(0, 12, 2))
    return ReportLine(text, (m1, m2, m3, m4, m5, m6))
