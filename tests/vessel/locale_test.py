"""Results do not depend on the locale of the host: one with a decimal comma gives the same as "C".

    locale_test.py LIBRARY SOURCE
"""

import ctypes
import json
import locale
import os
import subprocess
import sys
import tempfile
from pathlib import Path

SKIPPED = 77
OK, ALL = 0, 1 + 2 + 8
DESIGNATIONS = {"units": "US", "flange": [{
    "standard": {"class": 150, "size": 2.5}, "type": "weld neck", "P": 150.5, "T": 300.5, "material": "SA-105",
    "bolt_material": "SA-193 B7", "Fid": 2.5, "Go": 3.62, "Gi": 3.0, "m": 3, "y": 10000, "facing": "1a", "bolting": "TEMA"}],
    "mdmt": [{"description": "cold", "material": "SA-516 70", "tg": 0.75, "tr": 0.5, "MDMT": -20.5, "T": 300.5}],
}  # fmt: skip


def comma_locale(folder):
    """A locale of the system with a decimal comma, or one made in the folder; nothing without either."""
    listed = subprocess.run(["locale", "-a"], capture_output=True, text=True, check=False).stdout.split()
    names = [name for name in listed if name.startswith(("de_", "fr_", "es_", "it_", "nl_", "pl_"))]
    made = Path(folder, "de_DE")
    command = ["localedef", "-i", "de_DE", "-f", "ISO-8859-1", str(made)]
    if not names and subprocess.run(command, capture_output=True, check=False).returncode == 0:
        os.environ["LOCPATH"] = str(folder)
        names = ["de_DE"]
    for name in names:
        try:
            locale.setlocale(locale.LC_ALL, name)
        except locale.Error:
            continue
        if locale.localeconv()["decimal_point"] == ",":
            locale.setlocale(locale.LC_ALL, "C")
            return name
    return None


def answers(library, requests):
    """Of a handle opened now, the texts of everything."""
    handle = ctypes.c_void_p()
    assert library.tarvane_open(1, None, ctypes.byref(handle)) == OK
    for request in requests:
        result = ctypes.c_char_p()
        status = library.tarvane_calculate(handle, request, ALL, ctypes.byref(result))
        yield status, result.value, library.tarvane_last_error(handle)
    yield library.tarvane_schema(handle, b"keys")
    library.tarvane_close(handle)


def main():
    library, source = ctypes.CDLL(sys.argv[1]), Path(sys.argv[2])
    library.tarvane_last_error.restype = library.tarvane_schema.restype = ctypes.c_char_p
    library.tarvane_last_error.argtypes = library.tarvane_close.argtypes = [ctypes.c_void_p]
    library.tarvane_schema.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
    library.tarvane_calculate.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int32, ctypes.c_void_p]
    try:
        import tomllib
    except ImportError as missing:
        print(f"not run: {missing}")
        return SKIPPED
    requests = [tomllib.loads(path.read_text(encoding="utf-8")) for path in sorted(source.glob("examples/*.toml"))]
    requests.append(DESIGNATIONS)
    # Faults repeat the values and what is expected.
    requests += [{**DESIGNATIONS, "flange": [{**DESIGNATIONS["flange"][0], key: value}]}
                 for key, value in (("facing", 1.5), ("P", [1.5]), ("standard", {"class": 150, "size": 2.25}))]  # fmt: skip
    texts = [json.dumps(request).encode() for request in requests]
    with tempfile.TemporaryDirectory() as folder:
        name = comma_locale(folder)
        if name is None:
            print("not run: no locale with a decimal comma, and none can be made")
            return SKIPPED
        with_point = list(answers(library, texts))
        locale.setlocale(locale.LC_ALL, name)
        with_comma = list(answers(library, texts))
        assert locale.localeconv()["decimal_point"] == ","
    differ = [i for i, (one, other) in enumerate(zip(with_point, with_comma)) if one != other]
    for i in differ:
        print(f"request {i}: {with_comma[i]!r:.2000}\nnot {with_point[i]!r:.2000}")
    sound = sum(answer[0] == OK for answer in with_point[:-1])
    print(f"{len(texts)} requests, {sound} sound, in {name}: {len(differ)} differ")
    return 1 if differ or sound != len(texts) - 3 else 0


sys.exit(main())
