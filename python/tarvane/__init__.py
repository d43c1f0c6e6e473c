"""Pressure vessel calculations by the tarvane engine: bolted flanges and flat covers, shells and heads
under internal and external pressure.

    >>> import tarvane
    >>> engine = tarvane.Engine("path/to/libtarvane.so")
    >>> shell = engine.shell({"element": "cylinder", "P": 356.0, "S": 20000.0, "Sa": 20000.0,
    ...                       "D": 90.0, "t": 1.125, "c": 0.125, "T": 300.0})
    >>> shell.t_req, shell.mawp

Units are those of the engine: inches, pounds, psi, inch-pounds, degrees Fahrenheit. Input is a dictionary
of the report's symbols; help(tarvane.Engine) tells every key with its unit, as `tarvane.FLANGE_KEYS`,
`tarvane.SHELL_KEYS` and `tarvane.EXTERNAL_KEYS` do for a program. Results are objects, whose help tells their
units; a report is a list of `ReportLine`. Numbers may come from numpy; arrays are taken one number at a time.

What can't be calculated, or would have no effect, raises `InputError`, which names the key and the value.

The engine keeps its state in static storage: one calculation at a time, one engine a process. Calls from
several threads wait for one another, also through several `Engine` objects.
"""

from ._engine import Engine, EngineStopped
from ._external import EXTERNAL_KEYS, EXTERNAL_TEXTS, ExternalResult
from ._flange import FLANGE_FLAGS, FLANGE_KEYS, FLANGE_TEXTS, FlangeResult
from ._keys import InputError, Key
from ._library import NO_VALUE, ReportLine
from ._shell import ELEMENTS, SHELL_KEYS, SHELL_TEXTS, ShellResult

__all__ = [
    "ELEMENTS",
    "EXTERNAL_KEYS",
    "EXTERNAL_TEXTS",
    "Engine",
    "EngineStopped",
    "ExternalResult",
    "FLANGE_FLAGS",
    "FLANGE_KEYS",
    "FLANGE_TEXTS",
    "FlangeResult",
    "InputError",
    "Key",
    "NO_VALUE",
    "ReportLine",
    "SHELL_KEYS",
    "SHELL_TEXTS",
    "ShellResult",
]
