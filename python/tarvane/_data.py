"""What the engine's data files hold. It takes carbon steel for a modulus table that is not there, and CS-2
for a chart, and says nothing."""

from __future__ import annotations

import re

from ._keys import InputError
from ._library import Library

CHART_FILE = "ExtChartData.txt"
MODULUS_FILE = "ElastAlp07.txt"


def check_chart(library: Library, chart: str) -> None:
    """Raises InputError for a chart that the chart file does not have."""
    text = library.data_file(CHART_FILE) or ""
    names = [name.strip() for name in re.findall(r"^[^;\n]*?\[([^]\n]*)\]", text, re.MULTILINE)]
    known = names[: names.index("END") if "END" in names else None]
    if known and chart not in known:
        raise InputError(f"chart: {chart!r} is none of {CHART_FILE}: {', '.join(known)}")


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


def modulus_at(library: Library, name: str, reference: int, temperature: float, code: int) -> float:
    """ASMEMOD (millions of psi); 0.0 without the modulus file. Raises InputError where the table has no value
    at the temperature: the engine takes carbon steel then, and tells it in the report only."""
    library.report_to_store()
    result = float(library.call("ASMEMOD", temperature, reference, code))
    refused = any("Invalid reference # encountered" in line.text for line in library.report_lines())
    if refused and library.data_file(MODULUS_FILE, beside_library=True) is not None:
        raise InputError(f"{name}: table {reference} of {MODULUS_FILE} has no modulus at {temperature:g} F")
    return result
