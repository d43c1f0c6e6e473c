"""The C surface of vessel.h: where the library is found, its calls, its texts."""

from __future__ import annotations

import ctypes
import os
import sys
import sysconfig
import threading
import weakref
from pathlib import Path
from typing import Any, Callable, Optional, Sequence, Union

PROGRESS = ctypes.CFUNCTYPE(ctypes.c_int32, ctypes.c_void_p, ctypes.c_int64, ctypes.c_int64)
PathName = Union[str, "os.PathLike[str]"]

OK, FAULTY, ENGINE_STOPPED, NO_DATA = range(4)
WANT_RESULTS, WANT_REPORT, WANT_DRAWINGS = 1, 2, 8
_ABI = 1
_WINDOWS = sys.platform == "win32"
VESSEL, ENGINE = ("tarvane_vessel.dll", "tarvane.dll") if _WINDOWS else ("libtarvane_vessel.so", "libtarvane.so")


def path_text(name: str, given: PathName) -> str:
    """A path as text; an empty one would quietly become another."""
    try:
        path = os.fsdecode(given)
    except TypeError:
        raise TypeError(f"{name}: {given!r} is no path") from None
    if not path:
        raise ValueError(f"{name}: {given!r} is no path")
    return path


PACKAGE = Path(__file__).absolute().parent


def own_data(library: str) -> Optional[str]:
    """The data files that a wheel has in the package, for the library that is there too. The TARVANE_DATA variable,
    which the library reads itself, comes before them."""
    folder = PACKAGE / "data"
    own = Path(library).parent == PACKAGE and folder.is_dir() and not os.environ.get("TARVANE_DATA")
    return str(folder) if own else None


def library_path(given: Optional[PathName], library: str = VESSEL) -> str:
    """The given path, else that of the TARVANE_LIBRARY variable, else a library in this package or of the
    tree that it was installed with. A path of the other one of the two libraries is that of this one beside it."""
    named = os.environ.get("TARVANE_LIBRARY") if given is None else path_text("library", given)
    if named:
        if os.path.basename(named) in (VESSEL, ENGINE):
            named = os.path.join(os.path.dirname(named), library)
        # The loader looks for a name without a folder elsewhere than in the working folder.
        return os.path.abspath(named) if os.path.isfile(named) else named
    places = [PACKAGE]
    if PACKAGE.parent.name == "dist-packages":  # PREFIX/lib/python3/dist-packages
        libraries = PACKAGE.parents[2]
        places += [libraries, libraries / (sysconfig.get_config_var("MULTIARCH") or "")]
    # A package of a distribution has the plain name only for those who compile.
    names = (library, f"{library}.{_ABI}")
    return next((str(place / name) for place in places for name in names if (place / name).exists()), library)


def load(path: str, loader: Callable[[str], ctypes.CDLL] = ctypes.CDLL) -> ctypes.CDLL:
    try:
        return loader(path)
    except OSError as error:
        raise OSError(
            f"the library {path!r} can't be loaded ({error}); give its path, or by the variable TARVANE_LIBRARY"
        ) from error


class Handle:
    """An open handle of the library. Its texts are those of its latest call, so calls take turns."""

    def __init__(self, library: Optional[PathName], data_folder: Optional[PathName]) -> None:
        self.named = None if library is None else path_text("library", library)
        path = library_path(library)
        self.path = path
        self._library = load(path)
        try:
            self._library.tarvane_open.argtypes = [ctypes.c_int32, ctypes.c_char_p, ctypes.c_void_p]
            self._library.tarvane_close.argtypes = [ctypes.c_void_p]
            self._library.tarvane_close.restype = None
            self._library.tarvane_version.restype = ctypes.c_char_p
            self._library.tarvane_last_error.argtypes = [ctypes.c_void_p]
            self._library.tarvane_last_error.restype = ctypes.c_char_p
            self._library.tarvane_schema.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
            self._library.tarvane_schema.restype = ctypes.c_char_p
            self._library.tarvane_calculate.argtypes = [
                ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int32, ctypes.c_void_p,
            ]  # fmt: skip
            self._library.tarvane_sweep.argtypes = [
                ctypes.c_void_p, ctypes.c_char_p, ctypes.c_void_p, ctypes.c_void_p, ctypes.c_int64,
                ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p, PROGRESS, ctypes.c_void_p, ctypes.c_void_p,
            ]  # fmt: skip
        except AttributeError:
            raise OSError(f"{path} is not the vessel library of tarvane") from None
        self.data_folder = own_data(path) if data_folder is None else path_text("data_folder", data_folder)
        folder = None if self.data_folder is None else os.fsencode(self.data_folder)
        self._turn = threading.RLock()  # progress of a sweep may call
        self._handle = ctypes.c_void_p()
        self.opened: int = self._library.tarvane_open(_ABI, folder, ctypes.byref(self._handle))
        self.open_error = self._text(self._library.tarvane_last_error(self._handle))
        if self._handle:
            self.close = weakref.finalize(self, self._library.tarvane_close, self._handle)

    @staticmethod
    def _text(text: Optional[bytes]) -> str:
        return (text or b"").decode("utf-8")

    @property
    def version(self) -> str:
        return self._text(self._library.tarvane_version())

    def _open(self) -> ctypes.c_void_p:
        if not self.close.alive:
            raise ValueError("the vessel is closed")
        return self._handle

    def schema(self, what: str) -> tuple[str, str]:
        """The text, and the faults."""
        with self._turn:
            text = self._text(self._library.tarvane_schema(self._open(), what.encode("utf-8")))
            return text, self._text(self._library.tarvane_last_error(self._handle))

    def calculate(self, request: bytes, want: int) -> tuple[int, str]:
        """The status, and the result or the faults."""
        with self._turn:
            result = ctypes.c_char_p()
            status = self._library.tarvane_calculate(self._open(), request, want, ctypes.byref(result))
            text = result.value if status == OK else self._library.tarvane_last_error(self._handle)
            return status, self._text(text)

    def sweep(
        self, request: bytes, inputs: Sequence[str], outputs: Sequence[str], rows: int,
        places: Sequence[ctypes.c_void_p], progress: Callable[[Any, int, int], int],
    ) -> tuple[int, str, int]:  # fmt: skip
        """The status, the faults, and the rows that were made. `places`: of inputs, outputs and faults."""
        names = [(ctypes.c_char_p * (len(each) + 1))(*(name.encode("utf-8") for name in each), None)
                 for each in (inputs, outputs)]  # fmt: skip
        done = ctypes.c_int64()
        with self._turn:
            status = self._library.tarvane_sweep(
                self._open(), request, *names, rows, *places, PROGRESS(progress), None, ctypes.byref(done)
            )
            return status, self._text(self._library.tarvane_last_error(self._handle)), done.value
