"""The schemas of the vessel library accept every example and golden input and their results; the report lines of a
result are those of the golden report, what is found without a report is what is found with one, and the program
comes to the same verdict.

    schema_test.py LIBRARY PROGRAM SOURCE
"""

import copy
import ctypes
import hashlib
import json
import subprocess
import sys
from pathlib import Path

SKIPPED = 77
OK, ENGINE_STOPPED = 0, 2
RESULTS, REPORT, DRAWINGS = 1, 2, 8

try:
    import jsonschema
    import tomllib
except ImportError as missing:
    print(f"not run: {missing}")
    sys.exit(SKIPPED)


class Vessel:
    def __init__(self, library):
        self.library = ctypes.CDLL(library)
        self.library.tarvane_last_error.restype = ctypes.c_char_p
        self.library.tarvane_last_error.argtypes = [ctypes.c_void_p]
        self.library.tarvane_schema.restype = ctypes.c_char_p
        self.library.tarvane_schema.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
        self.library.tarvane_calculate.argtypes = [
            ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int32, ctypes.POINTER(ctypes.c_char_p)]
        self.handle = ctypes.c_void_p()
        if self.library.tarvane_open(1, None, ctypes.byref(self.handle)) != OK:
            raise RuntimeError(self.library.tarvane_last_error(None).decode())

    def schema(self, what):
        return json.loads(self.library.tarvane_schema(self.handle, what.encode()))

    def calculate(self, request, want):
        text = ctypes.c_char_p()
        status = self.library.tarvane_calculate(
            self.handle, json.dumps(request).encode(), want, ctypes.byref(text))
        error = json.loads(self.library.tarvane_last_error(self.handle))
        return status, json.loads(text.value) if text.value is not None else None, error


def golden_lines(report):
    """Text and marks of the records of a golden report."""
    for record in report.split(b"\n")[:-1]:
        marks = record[101:]
        yield {"text": record[1:101].rstrip(b" ").decode("cp1252"),
               "marks": [int(marks[i : i + 2] or 0) for i in range(0, 12, 2)]}


def without_report(result):
    """Also without the messages, of which some belong to the report."""
    result = copy.deepcopy(result)
    for components in result.values():
        if isinstance(components, list):
            for component in components:
                if isinstance(component, dict):
                    component.pop("report", None)
                    component.pop("messages", None)
    return result


def check_file(path, vessel, program, accepts, accepts_result):
    request = tomllib.loads(path.read_text(encoding="utf-8"))
    for fault in accepts.iter_errors(request):
        yield f"the schema refuses {fault.json_path}: {fault.message}"
    status, result, error = vessel.calculate(request, RESULTS | REPORT | DRAWINGS)
    if status != OK:
        yield f"status {status}: {error}"
        return
    for fault in accepts_result.iter_errors(result):
        yield f"the schema refuses of the result {fault.json_path}: {fault.message}"
    if vessel.calculate(request, RESULTS | REPORT | DRAWINGS)[1] != result:
        yield "another result the second time"
    for used in result["data"]:
        content = (Path(program).parent / used["file"]).read_bytes()
        if used["sha256"] != hashlib.sha256(content).hexdigest():
            yield f"another SHA-256 of {used['file']}"
        if used["version"] != result["program"]:
            yield f"the version {used['version']!r} of {used['file']}"
    ended = subprocess.run([program, "run", path], capture_output=True, check=False).returncode
    if (ended == 0) != (result["verdict"] == "pass"):
        yield f"the verdict {result['verdict']!r}, but status {ended} of the program"
    silent = vessel.calculate(request, RESULTS | DRAWINGS)[1]
    if without_report(silent) != without_report(result):
        yield "another result without a report"
    golden = path.with_suffix(".txt")
    if golden.exists():
        wanted = list(golden_lines(golden.read_bytes()))
        # The file has the components in their order, the result by their kinds.
        found = [line for kind in result.values() if isinstance(kind, list) for component in kind
                 if isinstance(component, dict) for line in component.get("report", ())]
        key = lambda line: (line["text"], line["marks"])
        if sorted(found, key=key) != sorted(wanted, key=key):
            yield "other lines than the golden report"


# Inputs that the schema must refuse: one change each of a sound one.
def spoilt(request):
    def change(path, value):
        changed = copy.deepcopy(request)
        place = changed
        for step in path[:-1]:
            place = place[step]
        place[path[-1]] = value
        return changed

    yield change(["flange", 0, "no_such_key"], 1)
    yield change(["no_such_key"], 1)
    yield change(["flange", 0, "P"], [155])
    yield change(["flange", 0, "P"], "ten")
    yield change(["flange", 0, "rigidity"], 1)
    yield change(["flange", 0, "type"], "weld nose")
    yield change(["flange", 0, "n"], 12.5)
    yield change(["flange", 0, "description"], 3)
    yield change(["tarvane"], 2)
    yield change(["units"], "CGS")
    yield change(["units"], {"thickness": {"factor": 0}})
    yield change(["flange"], 1)
    yield change(["vessel"], {"no_such_key": 1})


def main():
    library, program, source = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    vessel = Vessel(library)
    schemas = {what: vessel.schema(what) for what in ("input", "result")}
    for schema in schemas.values():
        jsonschema.Draft202012Validator.check_schema(schema)
    accepts, accepts_result = (jsonschema.Draft202012Validator(schemas[what]) for what in ("input", "result"))
    faults = []
    files = sorted([*source.glob("examples/*.toml"), *source.glob("tests/golden/*.toml")])
    if len(files) < 80:
        faults.append(f"only {len(files)} input files")
    for path in files:
        faults += [f"{path.name}: {fault}" for fault in check_file(path, vessel, program, accepts, accepts_result)]
    example = tomllib.loads((source / "examples/weld_neck_nps12.toml").read_text(encoding="utf-8"))
    for request in spoilt(example):
        if accepts.is_valid(request):
            faults.append(f"the schema accepts {json.dumps(request)[-200:]}")
        if vessel.calculate(request, RESULTS)[0] == OK:
            faults.append(f"the library accepts {json.dumps(request)[-200:]}")
    for fault in faults:
        print(fault)
    print(f"{len(files)} input files, {len(faults)} faults")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
