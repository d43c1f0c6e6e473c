"""Keys of an input dictionary: what each means, and what happens to a wrong one."""

from __future__ import annotations

import difflib
from dataclasses import dataclass
from typing import Any, Mapping, Optional

_GREATEST = 3.4028234663852886e38  # of single precision


class InputError(ValueError):
    """An input that can't be calculated; the message names the key and the value."""


@dataclass(frozen=True)
class Key:
    """One key: meaning, unit, the names that stand for numbers, and the value when it is not given."""

    meaning: str
    unit: str = ""
    default: Optional[float] = 0.0  # None: must be given
    choices: Optional[Mapping[str, int]] = None


def check_names(given: Mapping[str, Any], known: Mapping[str, Any]) -> None:
    """Raises InputError for a key that is not known, with the nearest one."""
    for name in given:
        if name not in known:
            near = difflib.get_close_matches(name, known, 1)
            hint = f"; did you mean {near[0]!r}?" if near else ""
            raise InputError(f"{name!r} is no key{hint}")


def _is_bool(value: Any) -> bool:
    return type(value).__name__ in ("bool", "bool_")  # that of numpy too


def number(name: str, key: Key, value: Any) -> float:
    """The number of a value, by its choices if it is one of their names."""
    if key.choices and isinstance(value, str):
        if value not in key.choices:
            raise InputError(f"{name}: {value!r} is none of {', '.join(map(repr, key.choices))}")
        return float(key.choices[value])
    try:
        if isinstance(value, (str, bytes, bytearray)) or (key.unit and _is_bool(value)):
            raise TypeError
        result = float(value)  # numbers of numpy too
    except (TypeError, ValueError, OverflowError):
        raise InputError(f"{name}: {value!r} is no number") from None
    if not abs(result) <= _GREATEST:
        raise InputError(f"{name}: {value!r} is not finite in single precision")
    if key.choices and result != key.default and result not in key.choices.values():
        names = ", ".join(f"{choice!r} ({n})" for choice, n in key.choices.items())
        raise InputError(f"{name}: {value!r} is none of {names}")
    return result


def whole(values: Mapping[str, float], name: str) -> int:
    """The integer of a key that counts or switches."""
    value = values[name]
    if value != int(value) or not -(2**31) <= value < 2**31:
        raise InputError(f"{name}: {value!r} is no whole number")
    return int(value)


def read_numbers(given: Mapping[str, Any], keys: Mapping[str, Key]) -> dict[str, float]:
    """The number of each key, defaults for those not given."""
    values = {}
    for name, key in keys.items():
        if name in given:
            values[name] = number(name, key, given[name])
        elif key.default is None:
            raise InputError(f"{name} is missing: {key.meaning}" + (f" ({key.unit})" if key.unit else ""))
        else:
            values[name] = key.default
    return values
