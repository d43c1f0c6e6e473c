"""The engine as an object."""

from __future__ import annotations

import ctypes
import inspect
import os
import threading
from typing import Any, Callable, Mapping, Optional, TypeVar, Union

from . import _external, _flange, _shell
from ._data import CHART_FILE, MODULUS_FILE, check_modulus, modulus_at
from ._keys import InputError, Key, described, read_numbers, read_text
from ._library import Library, PathName, path_text

Result = TypeVar("Result")
Method = TypeVar("Method", bound=Callable[..., Any])

_FUNCTION = getattr(ctypes, "WINFUNCTYPE", ctypes.CFUNCTYPE)
_CODE = _FUNCTION(None, ctypes.c_void_p, ctypes.c_int32)


# The engine's state is the process's, whatever the number of Engine objects.
_ONE_AT_A_TIME = threading.Lock()
_LONGEST_FOLDER = 256
_BOLT_FILE = "BOLTDATA.TXT"
_CHART_NAME = 8

# Loaded libraries whose data folder was given: it can be changed, but not be taken back.
_given_folders: dict[int, str] = {}

_MODULUS_KEYS = {
    "temperature": Key("temperature", "F"),
    "reference": Key("reference number of the modulus table", whole=True),
    "code": Key("design code", default=1.0, choices=_flange.CODES),
}


class EngineStopped(RuntimeError):
    """The engine asked for the end of the run: a flange that can't be calculated at all."""


class _Services(ctypes.Structure):
    _fields_ = [
        ("version", ctypes.c_int32),
        ("message_box", ctypes.c_void_p),
        ("dialog_text", ctypes.c_void_p),
        ("end_dialog", ctypes.c_void_p),
        ("report_fatal", _CODE),
        ("stop", _CODE),
        ("clock", ctypes.c_void_p),
        ("user", ctypes.c_void_p),
    ]


def _folder(given: PathName) -> str:
    """The path of a folder. The engine would calculate without its files and say nothing."""
    path = os.path.abspath(path_text("data_folder", given))
    if not os.path.isdir(path):
        raise NotADirectoryError(f"data_folder: {path} is no folder")
    if len(os.fsencode(path)) > _LONGEST_FOLDER:
        raise ValueError(f"data_folder: {path} has more than {_LONGEST_FOLDER} characters")
    files = (MODULUS_FILE, CHART_FILE, _BOLT_FILE)
    if not any(os.path.isfile(os.path.join(path, name)) for name in files):
        raise FileNotFoundError(f"data_folder: {path} has none of {', '.join(files)}")
    return path


def _telling(**tables: Mapping[str, Union[Key, str]]) -> Callable[[Method], Method]:
    """Puts the keys, with their units, behind the text of a method for help()."""

    def tell(method: Method) -> Method:
        text = inspect.cleandoc(method.__doc__ or "")
        for title, keys in tables.items():
            text += f"\n\n{title}:\n{described(keys)}"
        method.__doc__ = text + "\n"
        return method

    return tell


def _meanings(table: Mapping[str, tuple[int, str]]) -> dict[str, str]:
    return {name: meaning for name, (_, meaning) in table.items()}


class Engine:
    """The loaded library. Its state is the process's: make one, and use it for everything.

    library      path of libtarvane.so (tarvane.dll); without it that of the TARVANE_LIBRARY variable, a
                 library beside this package, or whatever the loader finds
    data_folder  folder of the data files; without it where the engine looks by itself, as a rule beside the
                 library
    """

    def __init__(
        self, library: Optional[PathName] = None, data_folder: Optional[PathName] = None
    ) -> None:
        folder = None if data_folder is None else _folder(data_folder)
        self._library = Library(library)
        if folder is not None:
            self._library.data_folder = folder
        self._fatal: Optional[int] = None
        self._services = _Services(
            version=1,
            report_fatal=_CODE(lambda _, code: setattr(self, "_fatal", code)),
            stop=_CODE(lambda _, __: None),  # the engine's call then comes back at once
        )

    @_telling(
        Numbers=_flange.FLANGE_KEYS,
        Texts=_meanings(_flange.FLANGE_TEXTS),
        Switches=_meanings(_flange.FLANGE_FLAGS),
    )
    def flange(self, data: Mapping[str, Any]) -> _flange.FlangeResult:
        """One bolted flange or flat cover.

        Raises InputError for a key that is unknown, missing or without effect, and for a value that is no
        such number; EngineStopped when the engine can't go on. A flange that the engine refuses has its
        numbered messages in the report, and None for its pressures.
        """
        return self._run(_flange.calculate, data)

    @_telling(Numbers=_shell.SHELL_KEYS, Texts=_shell.SHELL_TEXTS)
    def shell(self, data: Mapping[str, Any]) -> _shell.ShellResult:
        """A shell or head under internal pressure (ASME VIII-1 UG-27, UG-32, UG-34, Appendix 1).

        Raises InputError for a key that is unknown, missing or without effect, and for a value that is no
        such number.
        """
        return self._run(_shell.calculate, data)

    @_telling(Numbers=_external.EXTERNAL_KEYS, Texts=_external.EXTERNAL_TEXTS)
    def external(self, data: Mapping[str, Any]) -> _external.ExternalResult:
        """A shell or head under external pressure (ASME VIII-1 UG-28, UG-33, Code Case 2286, VIII-2 4.4).

        Raises InputError for a key that is unknown, missing or without effect, and for a value that is no
        such number.
        """
        return self._run(_external.calculate, data)

    def modulus(
        self, temperature: float, reference: int = 1, code: Union[int, str] = "VIII-1", chart: str = ""
    ) -> float:
        """Elastic modulus in millions of psi at a temperature (F): for the codes 'VIII-1' and 'VIII-2' by the
        reference number of its table, for 'PD 5500' and 'EN 13445' by the material's external pressure chart
        ('HA-3' austenitic, 'NFT-1' titanium, any other carbon steel).

        Raises InputError for a reference that the data files do not have, at this temperature or at all;
        0.0 without data files.
        """
        given = {"temperature": temperature, "reference": reference, "code": code}
        v = read_numbers(given, _MODULUS_KEYS)
        asme = v["code"] <= _flange.CODES["VIII-2"]
        name = read_text({"chart": chart}, "chart", _CHART_NAME)
        if name and asme:
            raise InputError(f"chart: {chart!r} has no effect on code {code!r}")
        if not name and not asme:
            raise InputError(f"chart is missing for code {code!r}: external pressure chart of the material")
        with _ONE_AT_A_TIME:
            self._prepare()
            if asme:
                check_modulus(self._library, "reference", int(v["reference"]))
            self._library.call("SET_CHART", name)
            return modulus_at(
                self._library, "reference", int(v["reference"]), v["temperature"], int(v["code"])
            )

    def _run(self, calculate: Callable[[Library, Mapping[str, Any]], Result],
             data: Mapping[str, Any]) -> Result:  # fmt: skip
        with _ONE_AT_A_TIME:
            self._prepare()
            result = calculate(self._library, data)
            if self._fatal is not None:
                raise EngineStopped(
                    f"the flange can't be calculated: its outside diameter, A = {data.get('A', 0.0)!r} in, "
                    f"is not above the corroded inside diameter (code {self._fatal})"
                )
            return result

    def _prepare(self) -> None:
        """As at load: no calculation depends on the one before it."""
        library, loaded = self._library, self._library.handle._handle
        if not library.data_folder and loaded in _given_folders:
            raise RuntimeError(
                f"another Engine of this process gave the data folder {_given_folders[loaded]}, which can't "
                "be taken back: give data_folder to this one too"
            )
        self._fatal = None
        library.call("RESET_ENGINE")
        library.call("SET_HOST_SERVICES", self._services)
        library.call("SET_METRIC_CONSTANTS")
        if library.data_folder:
            folder = os.fsencode(library.data_folder)
            library.call("SET_SYSTEM_DIR", folder)
            library.call("SET_MODULE_DIR", folder)
            _given_folders[loaded] = library.data_folder
