"""What the engine's data files hold. It takes carbon steel for a modulus table that is not there, and CS-2
for a chart, and says nothing."""

from __future__ import annotations

import re

from ._keys import InputError
from ._library import Integer, Library, Real

BOLT_FILE = "BOLTDATA.TXT"
CHART_FILE = "ExtChartData.txt"
MODULUS_FILE = "ElastAlp07.txt"

_BOLT_ROWS, _BOLT_NUMBERS = 27, 9
_MILLIMETRES = 25.4  # in an inch
_PRESENT = 0.001  # a diameter above it is one
# how the engine compares, in the unit of the section: with a size, and with the ends of the series
_BOLT_NEAR, _BOLT_END = 0.01, 0.0001


def check_chart(library: Library, chart: str) -> None:
    """Raises InputError for a chart that the chart file does not have."""
    text = library.data_file(CHART_FILE) or ""
    names = [name.strip() for name in re.findall(r"^[^;\n]*?\[([^]\n]*)\]", text, re.MULTILINE)]
    known = names[: names.index("END") if "END" in names else None]
    if known and chart not in known:
        raise InputError(f"chart: {chart!r} is none of {CHART_FILE}: {', '.join(known)}")


def bolt_sizes(library: Library, series: int) -> tuple[list[float], float]:
    """The sizes of a thread series in the unit of its section, and that unit's number in an inch."""
    diameters, rows, count = (Real * _BOLT_ROWS)(), (Real * (_BOLT_ROWS * _BOLT_NUMBERS))(), Integer()
    library.call("BOLTHELPER", series, diameters, rows, count)
    scale = _MILLIMETRES if diameters[0] > _PRESENT else 1.0
    return [size for size in diameters[1:] if size > _PRESENT], scale


def check_bolt_size(library: Library, name: str, series: int, diameter: float, nearest: bool) -> None:
    """Raises InputError for a bolt diameter (in) that the thread series does not have: the engine takes the
    next smaller size, or the smallest, which is what `nearest` permits."""
    sizes, scale = bolt_sizes(library, series)
    if not sizes:
        raise InputError(f"threads: {BOLT_FILE} has no bolts of {name!r}")
    x = Real(Real(diameter).value * scale).value
    inside = sizes[0] - _BOLT_END <= x <= sizes[-1] + _BOLT_END
    if nearest or (inside and any(abs(x - size) <= _BOLT_NEAR for size in sizes)):
        return
    taken = max((size for size in sizes if size <= x + _BOLT_NEAR), default=sizes[0])
    beside = [*[size for size in sizes if size < x][-1:], *[size for size in sizes if size > x][:1]]
    nearest_ones = " and ".join(f"{size / scale:g}" for size in beside)
    raise InputError(
        f"a: {diameter:g} in is no bolt size of {name!r}; the nearest are {nearest_ones} in, and "
        f"bolt_size 'nearest' takes {taken / scale:g} in"
    )


def check_modulus(library: Library, name: str, reference: int) -> None:
    """Raises InputError for a reference number that the modulus file does not have."""
    text = library.data_file(MODULUS_FILE, beside_library=True) or ""
    known: list[int] = []
    for line in text.partition("[CoE]")[0].splitlines():
        first = line[:19].split()
        if ";" not in line and first and first[0].isdigit():
            known.append(int(first[0]))
    if known and reference not in known:
        raise InputError(f"{name}: {reference} is none of {MODULUS_FILE}: {', '.join(map(str, known))}")


_CARBON_STEEL = 4  # of MODULUS_STATUS: it stood in; above: there is no modulus


def modulus_at(library: Library, name: str, reference: int, temperature: float, code: int) -> float:
    """ASMEMOD (millions of psi); 0.0 without the modulus file. Raises InputError where the table has no value
    at the temperature: the engine takes carbon steel then."""
    library.report_to_store()
    result = float(library.call("ASMEMOD", temperature, reference, code))
    status = Integer()
    library.call("MODULUS_STATUS", status)
    if status.value >= _CARBON_STEEL and library.data_file(MODULUS_FILE, beside_library=True) is not None:
        raise InputError(f"{name}: table {reference} of {MODULUS_FILE} has no modulus at {temperature:g} F")
    return result
