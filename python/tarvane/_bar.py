"""How far a sweep has come, on the standard error."""

from __future__ import annotations

import sys
import time
from typing import Any, Callable, Optional, TextIO, Union

Progress = Union[bool, None, Callable[[int, int], Any]]

_EVERY_ON_TERMINAL, _EVERY_ELSEWHERE = 0.2, 10.0  # seconds
_WIDTH = 30


def _span(seconds: float) -> str:
    minutes, seconds = divmod(round(seconds), 60)
    hours, minutes = divmod(minutes, 60)
    return f"{hours}:{minutes:02}:{seconds:02}" if hours else f"{minutes}:{seconds:02}"


class Bar:
    """On a terminal a line that changes, elsewhere a line now and then and one at the end."""

    def __init__(self, target: Optional[TextIO] = None, clock: Callable[[], float] = time.monotonic) -> None:
        self._target = sys.stderr if target is None else target
        self._terminal = self._target.isatty()
        self._clock = clock
        self._start = self._told = clock()

    def tell(self, done: int, of: int) -> None:
        now = self._clock()
        every = _EVERY_ON_TERMINAL if self._terminal else _EVERY_ELSEWHERE
        if done < of and now - self._told < every:
            return
        self._told = now
        seconds = now - self._start
        rate = done / seconds if seconds > 0 else 0.0
        words = f"{done} of {of} rows, {rate:.0f} a second"
        words += f", {_span((of - done) / rate)} left" if done < of and rate > 0 else f", {_span(seconds)}"
        if self._terminal:
            filled = _WIDTH * done // of if of else _WIDTH
            end = "\n" if done >= of else ""
            words = f"\r[{'#' * filled}{' ' * (_WIDTH - filled)}] {words}\x1b[K{end}"
        else:
            words = f"sweep: {words}\n"
        self._target.write(words)
        self._target.flush()


def teller(progress: Progress) -> Optional[Callable[[int, int], bool]]:
    """What is told the rows done and all of them; False ends the sweep."""
    if not progress:
        return None
    told = Bar().tell if isinstance(progress, bool) else progress
    return lambda done, of: told(done, of) is not False
