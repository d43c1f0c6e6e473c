"""Results and checks as pandas frames."""

from __future__ import annotations

import importlib
import math
from dataclasses import asdict
from typing import TYPE_CHECKING, Any, Iterable, Iterator

if TYPE_CHECKING:
    from ._result import Component


def _results(components: Iterable[Component]) -> Iterator[dict[str, Any]]:
    for component in components:
        for name in component.results:
            value = component.results.get(name)
            number = isinstance(value, float)
            yield {
                "component": component.path, "description": component.description, "name": name,
                "label": component._words.label(name), "value": value if number else math.nan,
                "choice": None if number else value, "unit": component._words.unit(name) if number else "",
                "why": component.why.get(name, ""),
            }  # fmt: skip


def _checks(components: Iterable[Component]) -> Iterator[dict[str, Any]]:
    for component in components:
        for check in component.checks:
            row = asdict(check)
            yield {"component": row.pop("component"), "description": component.description, **row}


ROWS = {"results": _results, "checks": _checks}


def of(components: Iterable[Component], what: str) -> Any:
    if what not in ROWS:
        raise ValueError(f"what: {what!r} is no table; {' or '.join(map(repr, ROWS))} is expected")
    try:
        pandas = importlib.import_module("pandas")
    except ImportError as missing:
        raise ImportError(f"to_frame needs pandas ({missing}); to_dict does without") from missing
    frame = pandas.DataFrame(list(ROWS[what](components)))
    numbers = [name for name in ("demand", "limit", "ratio") if name in frame]
    return frame.astype({name: float for name in numbers})
