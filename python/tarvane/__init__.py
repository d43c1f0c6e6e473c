"""Pressure vessel calculations: bolted flanges and flat covers, shells and heads under internal and external
pressure, minimum design metal temperatures.

    >>> import tarvane
    >>> result = tarvane.run({"shell": [{"kind": "cylinder", "P": 356.0, "T": 300.0, "material": "SA-516 70",
    ...                                  "D": 90.0, "t": 1.125, "ci": 0.125}]})
    >>> result.passed, result.shell[0].mawp

A request is a dictionary, or the path of a TOML or JSON file; help(tarvane.run) lists its keys with their units,
`Vessel.schema` gives them to a program. A result has verdicts, results, checks and report lines under the names
of the same vocabulary; a result without a value raises `NoValue` with the reason. What can't be calculated raises
`InputError` with all faults. Numbers may come from numpy; arrays are taken one number at a time.

One calculation runs at a time; calls from several threads wait for one another.
"""

from typing import Any

from . import _old, _vessel
from ._batch import Batch, batch
from ._faults import EngineStopped, Fault, InputError
from ._old import ELEMENTS, NO_VALUE, Engine, ExternalResult, FlangeResult, Key, ShellResult
from ._result import (
    Check,
    Component,
    DataFile,
    Governing,
    Input,
    NoValue,
    ReportLine,
    Result,
    Results,
    SummaryRow,
    UsedItem,
)
from ._sweep import Sweep, Written
from ._vessel import Vessel, run, sweep, sweep_to_file

_TABLES = {f"{kind.upper()}_{what}" for kind in _old.NAMES for what in ("KEYS", "TEXTS")} | {"FLANGE_FLAGS"}

__all__ = [
    "Batch",
    "Check",
    "Component",
    "DataFile",
    "ELEMENTS",
    "Engine",
    "EngineStopped",
    "ExternalResult",
    "Fault",
    "FlangeResult",
    "Governing",
    "Input",
    "InputError",
    "Key",
    "NO_VALUE",
    "NoValue",
    "ReportLine",
    "Result",
    "Results",
    "ShellResult",
    "SummaryRow",
    "Sweep",
    "UsedItem",
    "Vessel",
    "Written",
    "batch",
    "run",
    "sweep",
    "sweep_to_file",
]


def __getattr__(name: str) -> Any:
    """The old tables of keys, asked of the library."""
    if name not in _TABLES:
        raise AttributeError(f"module 'tarvane' has no attribute {name!r}")
    _old._old(name, "the keys of Vessel.schema('keys')")
    return _old.tables(_vessel._default(), name)
