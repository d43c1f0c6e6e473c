"""What can be wrong, and its exceptions."""

from __future__ import annotations

import json
from dataclasses import dataclass
from typing import Iterable

from ._library import ENGINE_STOPPED, FAULTY, NO_DATA


@dataclass(frozen=True)
class Fault:
    """What is wrong with a request: where ('flange[0].P'; empty: the whole), the value, and why."""

    path: str
    value: str
    reason: str

    def __str__(self) -> str:
        return f"{self.path}: {self.reason}" if self.path else self.reason


class InputError(ValueError):
    """A request that can't be calculated, with all its `faults`."""

    def __init__(self, faults: Iterable[Fault]) -> None:
        self.faults = tuple(faults)
        super().__init__("\n".join(map(str, self.faults)))


class EngineStopped(RuntimeError):
    """The engine ended the run: a flange that can't be calculated at all."""


def faults_of(text: str) -> list[Fault]:
    return [Fault(**fault) for fault in json.loads(text or "[]")]


def failed(status: int, text: str) -> Exception:
    faults = faults_of(text)
    if status == FAULTY:
        return InputError(faults)
    words = "\n".join(f"{fault} ({fault.value})" if fault.value else str(fault) for fault in faults)
    return {ENGINE_STOPPED: EngineStopped, NO_DATA: OSError}.get(status, RuntimeError)(words)
