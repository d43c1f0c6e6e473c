"""What `tarvane run` writes beside its report, of every example and golden input: the JSON is what the library finds,
with the texts of the document; it is as the schema says; the CSV has the checks and results of the JSON; the numbers
that are shown are those of the JSON, rounded.

    documents_test.py LIBRARY PROGRAM SOURCE
"""

import csv
import ctypes
import hashlib
import json
import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

SKIPPED = 77
RESULTS_REPORT_DRAWINGS = 1 | 2 | 8
KINDS = ("flange", "shell", "external", "mdmt")
HEADINGS = ["table", "component", "description", "id", "label", "case", "paragraph", "value", "operator", "limit",
            "unit", "ratio", "state", "force", "remark"]

try:
    import jsonschema
    import tomllib
except ImportError as missing:
    print(f"not run: {missing}")
    sys.exit(SKIPPED)


class Library:
    def __init__(self, path):
        self.calls = ctypes.CDLL(path)
        self.calls.tarvane_calculate.argtypes = [
            ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int32, ctypes.POINTER(ctypes.c_char_p)]
        self.handle = ctypes.c_void_p()
        if self.calls.tarvane_open(1, None, ctypes.byref(self.handle)) != 0:
            raise RuntimeError("the library does not open")

    def result(self, request):
        text = ctypes.c_char_p()
        self.calls.tarvane_calculate(
            self.handle, json.dumps(request).encode(), RESULTS_REPORT_DRAWINGS, ctypes.byref(text))
        return text.value


def single(number):
    """The single that a decimal of the JSON means."""
    return struct.unpack("f", struct.pack("f", number))[0]


def is_rounded(shown, number):
    """Whether a text is a number, rounded to the decimals of the text."""
    decimals = len(shown.partition(".")[2])
    return shown == f"{single(number):.{decimals}f}"


def by_kinds(text):
    """An input file with its components in the order of the kinds, in which a request as JSON has them: the metal
    temperatures that the vessel asks for are numbered in the order of the components."""
    head, *tables = re.split(r"^(?=\[)", text, flags=re.M)
    place = {f"[[{kind}]]": number for number, kind in enumerate(KINDS, start=1)}
    return head + "".join(sorted(tables, key=lambda table: place.get(table.partition("\n")[0].split("#")[0].strip(), 0)))


def components_of(result):
    for kind in KINDS:
        for place, component in enumerate(result.get(kind, ())):
            yield kind, place, component


def check_json(path, text, library, schema):
    result = json.loads(text)
    for fault in schema.iter_errors(result):
        yield f"the schema refuses {fault.json_path}: {fault.message}"
    source = path.read_bytes()
    request = tomllib.loads(source.decode())
    document = result.pop("document", {})
    if document.pop("input", None) != {"file": path.name, "sha256": hashlib.sha256(source).hexdigest()}:
        yield "another input file"
    if document != request.get("document", {}):
        yield f"other texts of the document: {document}"
    if json.dumps(result) != json.dumps(json.loads(library.result(request))):
        yield "another result than that of the library"


# ---- shown numbers ---------------------------------------------------------------------------------------

CHECKS = re.compile(r"^Check +Paragraph .*\n-+\n((?:.+\n)*)", re.M)
VERDICT = re.compile(r"^(?:PASS|FAIL)  (flange|shell|external|mdmt) ([0-9]+)\b", re.M)


def shown_checks(shown):
    """Demand, limit, ratio and state of the rows of each component, by its kind and place."""
    for verdict in VERDICT.finditer(shown):
        table = CHECKS.search(shown, verdict.end())
        following = VERDICT.search(shown, verdict.end())
        rows = []
        if table and not (following and following.start() < table.start()):
            for line in table[1].splitlines():
                if line.startswith("    ") or not line[93:].strip():
                    continue  # a remark, or more of a label
                rows.append((line[50:60].strip(), line[64:74].strip(), line[82:89].strip(), line[91:].strip()))
        yield verdict[1], int(verdict[2]) - 1, rows


def check_shown(result, shown):
    found = {}
    for kind, place, rows in shown_checks(shown):
        found.setdefault((kind, place), rows)  # the verdict at the end names those that fail once more
    for kind, place, component in components_of(result):
        rows = found.get((kind, place))
        if rows is None or len(rows) != len(component["checks"]):
            yield f"{kind} {place + 1}: {len(component['checks'])} checks, shown {rows}"
            continue
        for check, (demand, limit, ratio, state) in zip(component["checks"], rows):
            name = f"{kind} {place + 1}: {check['id']}"
            if "ratio" not in check:
                if demand or limit or ratio:
                    yield f"{name}: shown with figures"
                continue
            for number, text in ((check["demand"], demand), (check["limit"], limit), (check["ratio"], ratio)):
                if not is_rounded(text, number) and not (text == ">9999" and number > 9999):
                    yield f"{name}: {text} is shown for {number}"
            if state != check["state"] and not (state in ("warning", "advice") and check["state"] == "fail"):
                yield f"{name}: {state} is shown for {check['state']}"


# ---- CSV -------------------------------------------------------------------------------------------------


def rows_of(result):
    """The rows that the CSV must have, in any order: table, component, id, case, value, operator, limit, ratio, state."""
    for kind, place, component in components_of(result):
        path = f"{kind}[{place}]"
        for check in component["checks"]:
            yield ("check", path, check["id"], check.get("case", ""), check.get("demand"), check.get("operator", ""),
                   check.get("limit"), check.get("ratio"), check["state"])
        for name, value in component["results"].items():
            yield "result", path, name, "", value, "", None, None, ""
    for row in result.get("summary", ()):
        yield "result", "vessel", row["name"], "", row["value"], "", None, None, ""


def same_value(text, value):
    if isinstance(value, bool):
        return text == ("true" if value else "false")
    if isinstance(value, (int, float)):
        return text != "" and float(text) == value
    return text == (value or "")


def check_csv(result, content):
    if b"\n" in content.replace(b"\r\n", b""):
        yield "a line of the CSV does not end in CR LF"
    rows = list(csv.DictReader(content.decode().splitlines(keepends=True), strict=True))
    if not rows or list(rows[0]) != HEADINGS:
        yield f"the headings {list(rows[0]) if rows else None}"
        return
    expected = sorted(rows_of(result), key=lambda row: row[:4])
    rows.sort(key=lambda row: (row["table"], row["component"], row["id"], row["case"]))
    if len(rows) != len(expected):
        yield f"{len(rows)} rows in the CSV, not {len(expected)}"
        return
    labels = {"check": set(), "result": set()}
    for row, (table, path, name, case, value, operator, limit, ratio, state) in zip(rows, expected):
        if ((row["table"], row["component"], row["id"], row["case"], row["operator"], row["state"]) !=
                (table, path, name, case, operator, state)
                or not same_value(row["value"], value) or not same_value(row["limit"], limit)
                or not same_value(row["ratio"], ratio)):
            yield f"the CSV has {row} for {(path, name, value, limit, ratio, state)}"
        if value is None and table == "result" and not row["remark"]:
            yield f"the CSV does not say why {path}.{name} has no value"
        if not row["label"]:
            yield f"{path}.{name} has no label"
        labels[table].add(row["unit"])
    if result["units"] == "SI" and "psi" in labels["check"] | labels["result"]:
        yield "psi in a file in SI units"


# ---- all files -------------------------------------------------------------------------------------------


def check_file(path, program, folder, library, schema):
    copy = folder / path.name
    copy.write_text(by_kinds(path.read_text(encoding="utf-8")), encoding="utf-8")
    path = copy
    files = {name: folder / f"out.{name}" for name in ("json", "csv")}
    arguments = [argument for name, file in files.items() for argument in (f"--{name}", file)]
    run = subprocess.run([program, "run", path, "--plain", *arguments], capture_output=True, check=False)
    if run.returncode not in (0, 1):
        yield f"status {run.returncode}: {run.stderr.decode()}"
        return
    text = files["json"].read_text(encoding="utf-8")
    result = json.loads(text)
    if (run.returncode == 0) != (result["verdict"] == "pass"):
        yield f"status {run.returncode} for the verdict {result['verdict']}"
    yield from check_json(path, text, library, schema)
    yield from check_shown(result, run.stdout.decode())
    yield from check_csv(result, files["csv"].read_bytes())


def main():
    library, program, source = Library(sys.argv[1]), sys.argv[2], Path(sys.argv[3])
    schema = json.loads(subprocess.run([program, "schema", "result"], capture_output=True, check=True).stdout)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    files = sorted([*source.glob("examples/*.toml"), *source.glob("tests/golden/*.toml")])
    faults = [] if len(files) >= 80 else [f"only {len(files)} input files"]
    with tempfile.TemporaryDirectory() as folder:
        for path in files:
            faults += [f"{path.name}: {fault}" for fault in check_file(path, program, Path(folder), library, validator)]
    for fault in faults[:100]:
        print(fault)
    print(f"{len(files)} input files, {len(faults)} faults")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
