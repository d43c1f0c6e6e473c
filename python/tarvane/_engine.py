"""The engine as an object."""

from __future__ import annotations

import ctypes
import os
import threading
from typing import Any, Callable, Mapping, Optional, TypeVar, Union

from . import _external, _flange, _shell
from ._keys import Key, read_numbers, whole
from ._library import Integer, Library, Real

Result = TypeVar("Result")

_FUNCTION = getattr(ctypes, "WINFUNCTYPE", ctypes.CFUNCTYPE)
_TEXTS = _FUNCTION(None, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p)
_CODE = _FUNCTION(None, ctypes.c_void_p, ctypes.c_int32)


# The engine's state is the process's, whatever the number of Engine objects.
_ONE_AT_A_TIME = threading.Lock()
_LONGEST_FOLDER = 256

_MODULUS_KEYS = {
    "temperature": Key("temperature", "F"),
    "reference": Key("reference number of the modulus table"),
    "code": Key("design code", default=1.0, choices=_flange.CODES),
}


class EngineStopped(RuntimeError):
    """The engine asked for the end of the run: a flange that can't be calculated at all."""


class _Services(ctypes.Structure):
    _fields_ = [
        ("version", ctypes.c_int32),
        ("message_box", _TEXTS),
        ("dialog_text", ctypes.c_void_p),
        ("end_dialog", ctypes.c_void_p),
        ("report_fatal", _CODE),
        ("stop", _CODE),
        ("clock", ctypes.c_void_p),
        ("user", ctypes.c_void_p),
    ]


def _folder(given: Union[str, os.PathLike]) -> bytes:
    """The path of a folder. The engine would calculate without its files and say nothing."""
    path = os.path.abspath(given)
    if not os.path.isdir(path):
        raise NotADirectoryError(f"data_folder: {path} is no folder")
    encoded = os.fsencode(path)
    if len(encoded) > _LONGEST_FOLDER:
        raise ValueError(f"data_folder: {path} has more than {_LONGEST_FOLDER} characters")
    return encoded


class Engine:
    """The loaded library. Its state is the process's: make one, and use it for everything.

    library: path of libtarvane.so (tarvane.dll); without it that of the TARVANE_LIBRARY variable, a
    library beside this package, or whatever the loader finds.
    data_folder: folder of the data files; without it those beside the library.
    """

    def __init__(
        self,
        library: Optional[Union[str, os.PathLike]] = None,
        data_folder: Optional[Union[str, os.PathLike]] = None,
    ) -> None:
        self._library = Library(library)
        self._data_folder = None if data_folder is None else _folder(data_folder)
        if self._data_folder is not None:
            self._library.data_folder = os.fsdecode(self._data_folder)
        self.messages: list[str] = []
        """Texts of the engine's message boxes during the latest calculation."""
        self._fatal: Optional[int] = None
        self._services = _Services(
            version=1,
            message_box=_TEXTS(lambda _, text, __: self.messages.append(text.decode("latin-1"))),
            report_fatal=_CODE(lambda _, code: setattr(self, "_fatal", code)),
            stop=_CODE(lambda _, __: None),  # the engine's call then comes back at once
        )

    def flange(self, data: Mapping[str, Any]) -> _flange.FlangeResult:
        """One bolted flange or flat cover; keys: tarvane.FLANGE_KEYS, tarvane.FLANGE_TEXTS.

        Lengths in inches, pressures and stresses in psi, temperatures in degrees Fahrenheit, loads in
        pounds. Raises InputError for an unknown or missing key and EngineStopped when the engine can't
        go on; a flange that the engine refuses has its numbered messages in the report.
        """
        return self._run(_flange.calculate, data)

    def shell(self, data: Mapping[str, Any]) -> _shell.ShellResult:
        """A shell or head under internal pressure; keys: tarvane.SHELL_KEYS (inches, psi, F)."""
        return self._run(_shell.calculate, data)

    def external(self, data: Mapping[str, Any]) -> _external.ExternalResult:
        """A shell or head under external pressure; keys: tarvane.EXTERNAL_KEYS (inches, psi, F) and
        `chart`, the name of the external pressure chart."""
        return self._run(_external.calculate, data)

    def modulus(self, temperature: float, reference: int, code: Union[int, str] = "VIII-1") -> float:
        """Elastic modulus in millions of psi at a temperature (F) by the reference number of its table;
        0.0 when there is none."""
        given = {"temperature": temperature, "reference": reference, "code": code}
        v = read_numbers(given, _MODULUS_KEYS)
        with _ONE_AT_A_TIME:
            self._prepare()
            return self._library.handle.ASMEMOD(
                ctypes.byref(Real(v["temperature"])), ctypes.byref(Integer(whole(v, "reference"))),
                ctypes.byref(Integer(whole(v, "code"))),
            )  # fmt: skip

    def _run(self, calculate: Callable[[Library, Mapping[str, Any]], Result],
             data: Mapping[str, Any]) -> Result:  # fmt: skip
        with _ONE_AT_A_TIME:
            self._prepare()
            result = calculate(self._library, data)
            if self._fatal is not None:
                raise EngineStopped(f"the engine can't go on, code {self._fatal}")
            return result

    def _prepare(self) -> None:
        """As at load: no calculation depends on the one before it."""
        self.messages, self._fatal = [], None
        self._library.call("RESET_ENGINE")
        self._library.call("SET_HOST_SERVICES", self._services)
        self._library.call("SET_METRIC_CONSTANTS")
        if self._data_folder is not None:
            self._library.call("SET_SYSTEM_DIR", self._data_folder)
            self._library.call("SET_MODULE_DIR", self._data_folder)
