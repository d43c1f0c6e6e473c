"""Keys of an input dictionary: what each means, and what happens to a wrong one."""

from __future__ import annotations

import difflib
import numbers
import textwrap
from dataclasses import dataclass
from typing import Any, Iterable, Mapping, Optional, Union

from ._library import NO_VALUE, Real

_GREATEST = 3.4028234663852886e38  # of single precision


class InputError(ValueError):
    """An input that can't be calculated; the message names the key and the value."""


@dataclass(frozen=True)
class Key:
    """One key of an input dictionary: a number, a choice or a switch."""

    meaning: str
    unit: str = ""
    default: Optional[float] = 0.0
    """The value when the key is not given; None: it must be given."""
    choices: Optional[Mapping[str, int]] = None
    """Names that stand for numbers; the numbers themselves are taken too."""
    switch: bool = False
    """True or False, 1 or 0."""
    whole: bool = False
    above: Optional[float] = None
    least: Optional[float] = None
    most: Optional[float] = None
    of: tuple[str, ...] = ()
    """The elements or flange types that read the key, where not all do."""
    needed: tuple[str, ...] = ()
    """Those that must give it."""
    near: str = ""
    """The key that other notations, that of the input files among them, call so."""

    def __str__(self) -> str:
        """Unit, meaning and what is taken, as help() shows them."""
        words = [f"({self.unit}) " if self.unit else "", self.meaning]
        if self.choices:
            words.append(": " + ", ".join(map(repr, self.choices)))
        if self.switch:
            words.append(": True or False")
        if self.of:
            words.append("; of " + ", ".join(self.of))
        words.append(f" [{self._presence()}]")
        return "".join(words)

    def _presence(self) -> str:
        if self.default is None and not self.of:
            return "must be given"
        if self.default is None or (self.needed and set(self.needed) == set(self.of)):
            return "must be given there"
        if self.switch:
            shown = repr(bool(self.default))
        else:
            names = [name for name, n in (self.choices or {}).items() if n == self.default]
            shown = repr(names[0]) if names else f"{self.default:g}"
        needed = f"; {', '.join(self.needed)}: must be given" if self.needed else ""
        return f"{shown} when not given{needed}"


def described(keys: Mapping[str, Union[Key, str]]) -> str:
    """The keys with unit and meaning, one below the other."""
    width = max(map(len, keys)) + 2
    return "\n".join(
        textwrap.fill(
            str(key), 100, initial_indent="    " + name.ljust(width), subsequent_indent=" " * (width + 4)
        )
        for name, key in keys.items()
    )


def _meant(name: str) -> str:
    return f"; did you mean {name!r}?" if name else ""


def check_names(given: Any, known: Iterable[str], others: Optional[Mapping[str, str]] = None) -> None:
    """Raises InputError for what is no dictionary, and for a key that is not known, with the nearest one.
    `others` are names of other notations, each with the key that it stands for."""
    if not isinstance(given, Mapping):
        raise InputError(f"a dictionary is expected, not {given!r} ({type(given).__name__})")
    names = list(known)
    for name, value in given.items():
        if name in names:
            continue
        near = (others or {}).get(name, "") if isinstance(name, str) else ""
        if not near and isinstance(name, str):
            near = next(iter(difflib.get_close_matches(name, names, 1)), "")
        raise InputError(f"{name!r} is no key (its value is {value!r}){_meant(near)}")


def _plain(value: Any) -> Any:
    """A scalar of numpy, or an array without dimensions, as the number of Python that it holds."""
    if getattr(value, "shape", None) == () and hasattr(value, "item"):
        return value.item()
    return value


def _single(name: str, key: Key, given: Any) -> float:
    value = _plain(given)
    try:
        if isinstance(value, (str, bytes, bytearray)) or getattr(value, "shape", ()) != ():
            raise TypeError
        if isinstance(value, numbers.Complex) and not isinstance(value, numbers.Real):
            raise TypeError
        if isinstance(value, bool) and not key.switch:
            raise TypeError
        result = float(value)
    except (TypeError, ValueError, OverflowError):
        expected = "neither True nor False" if key.switch else "no number"
        unit = f" ({key.unit})" if key.unit else ""
        raise InputError(f"{name}: {given!r} is {expected}{unit}") from None
    if not abs(result) <= _GREATEST:
        raise InputError(f"{name}: {given!r} is not finite in single precision")
    if Real(result).value == NO_VALUE:
        raise InputError(f"{name}: {given!r} stands for 'no value' in the engine; leave the key out")
    return result


def number(name: str, key: Key, given: Any) -> float:
    """The number of a value, by its choices if it is one of their names."""
    value = _plain(given)
    if key.choices and isinstance(value, str):
        if value not in key.choices:
            raise InputError(f"{name}: {given!r} is none of {', '.join(map(repr, key.choices))}")
        return float(key.choices[value])
    result = _single(name, key, given)
    if key.choices and result not in key.choices.values():
        names = ", ".join(f"{choice!r} ({n})" for choice, n in key.choices.items())
        raise InputError(f"{name}: {given!r} is none of {names}{_meant(key.near)}")
    if key.switch and result not in (0.0, 1.0):
        raise InputError(f"{name}: {given!r} is neither True nor False")
    if key.whole and (result != int(result) or not -(2**31) <= result < 2**31):
        raise InputError(f"{name}: {given!r} is no whole number")
    unit = f" {key.unit}" if key.unit else ""
    if key.above is not None and not result > key.above:
        raise InputError(f"{name}: {given!r} is not above {key.above:g}{unit}")
    if key.least is not None and not result >= key.least:
        raise InputError(f"{name}: {given!r} is below {key.least:g}{unit}")
    if key.most is not None and not result <= key.most:
        raise InputError(f"{name}: {given!r} is above {key.most:g}{unit}")
    return result


def missing(name: str, key: Key, why: str = "") -> InputError:
    unit = f" ({key.unit})" if key.unit else ""
    choices = f": {', '.join(map(repr, key.choices))}" if key.choices else ""
    return InputError(f"{name} is missing{why}: {key.meaning}{unit}{choices}")


def read_numbers(given: Mapping[str, Any], keys: Mapping[str, Key], kind: str = "") -> dict[str, float]:
    """The number of each key, defaults for those not given. `kind` is the key that tells which others
    count: the element, or the type of a flange."""
    values = {}
    which = ""
    if kind:
        if kind not in given:
            raise missing(kind, keys[kind])
        values[kind] = number(kind, keys[kind], given[kind])
        which = next(name for name, n in (keys[kind].choices or {}).items() if n == values[kind])
    for name, key in keys.items():
        counts = not key.of or which in key.of
        if name in given:
            if not counts:
                raise InputError(
                    f"{name}: {given[name]!r} has no effect on {kind} {which!r}; it is of "
                    f"{', '.join(key.of)}{_meant(key.near)}"
                )
            values[name] = number(name, key, given[name])
        elif key.default is not None and which not in key.needed:
            values[name] = key.default
        elif counts:
            raise missing(name, key, f" for {kind} {which!r}" if key.of or key.needed else "")
        else:
            values[name] = 0.0
    return values


def read_text(given: Mapping[str, Any], name: str, longest: int) -> bytes:
    """A text in the engine's single-byte characters, empty when it is not given."""
    value = given.get(name, "")
    if not isinstance(value, str):
        raise InputError(f"{name}: {value!r} is no text")
    text = value.strip()
    if len(text) > longest:
        raise InputError(f"{name}: {value!r} has more than {longest} characters")
    if not text.isprintable():
        raise InputError(f"{name}: {value!r} has characters that can't be printed")
    try:
        return text.encode("latin-1")
    except UnicodeEncodeError as error:
        wrong = text[error.start : error.end]
        raise InputError(f"{name}: {value!r} has {wrong!r}, which is no Latin-1 character") from None
