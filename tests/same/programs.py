"""Two builds of the program on every input that there is: golden inputs, examples, and the flanges of the
cases. Standard output, standard error, status and report file are compared byte for byte.

    programs.py SOURCE OLD NEW SCRATCH

Each program reads the data files beside it. SCRATCH is a folder of this script's own; what differs is left
there, each input with the outputs of both. Status 0: the same; 1: there are differences.
"""

import difflib
import os
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

SIDES = ("old", "new")
LIMIT = 120  # seconds
SHOWN = 12  # lines of a difference
HEAD_KEYS = ("units", "decimal_comma", "metric_constants")


def flanges_of_cases(path):
    """Name and input file of each case that runs through the host, as tests/cases_runner.cpp makes it."""
    cases, name = {}, None
    for line in path.read_text(encoding="utf-8").splitlines():
        quoted = False
        for at, character in enumerate(line):
            quoted ^= character == '"'
            if character == "#" and not quoted:
                line = line[:at]
                break
        word, _, rest = line.strip().partition(" ")
        key, equals, value = (part.strip() for part in line.partition("="))
        if word == "case":
            name = rest.strip()
            cases[name] = {"routine": "", "inputs": {}}
        elif word == "like":
            other = cases[rest.strip()]
            cases[name] = {"routine": other["routine"], "inputs": dict(other["inputs"])}
        elif word == "routine":
            cases[name]["routine"] = rest.strip()
        elif equals and word not in ("expect", "line", "no"):
            cases[name]["inputs"].pop(key, None)
            if value:
                cases[name]["inputs"][key] = value
    for name, case in cases.items():
        if case["routine"] != "FLANGE_CALC":
            continue
        pairs = case["inputs"].items()
        head = "".join(f"{key} = {value}\n" for key, value in pairs if key in HEAD_KEYS)
        body = "".join(f"{key} = {value}\n" for key, value in pairs if key not in HEAD_KEYS)
        yield name, head + "[[flange]]\n" + body


def inputs(source, scratch):
    yield from sorted((source / "tests/golden").glob("*.toml"))
    yield from sorted((source / "examples").glob("*.toml"))
    folder = scratch / "cases"
    folder.mkdir()
    for path in sorted((source / "tests/cases").glob("*.case")):
        for number, (_, text) in enumerate(flanges_of_cases(path), 1):
            made = folder / f"{path.stem}_{number}.toml"
            made.write_text(text, encoding="utf-8")
            yield made


def outputs(program, path, folder):
    """Each output by its name. Both programs are called by one name, as it may be in a message."""
    folder.mkdir(parents=True)
    report = folder / "report.txt"
    surroundings = {"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "HOME": str(folder)}
    try:
        done = subprocess.run(["tarvane", "run", str(path), "--report", "report.txt"], cwd=folder,
                              executable=program, env=surroundings, capture_output=True,
                              stdin=subprocess.DEVNULL, timeout=LIMIT)  # fmt: skip
        found = {"status": str(done.returncode).encode(), "stdout": done.stdout, "stderr": done.stderr}
    except subprocess.TimeoutExpired:
        found = {"status": b"did not come back", "stdout": b"", "stderr": b""}
    found["report"] = report.read_bytes() if report.exists() else b"(no report file)"
    others = [entry.name for entry in folder.iterdir() if entry != report]
    found["other files"] = " ".join(sorted(others)).encode()
    for name, content in found.items():
        (folder / name).write_bytes(content)
    return found


def compare(path, programs, scratch):
    """The names of the outputs that differ, and the head of the first difference."""
    folders = {side: scratch / path.parent.name / path.stem / side for side in SIDES}
    found = {side: outputs(programs[side], path, folders[side]) for side in SIDES}
    different = [name for name in found["old"] if found["old"][name] != found["new"][name]]
    if not different:
        shutil.rmtree(scratch / path.parent.name / path.stem)
        return different, []
    old, new = (found[side][different[0 if different[0] != "status" else -1]] for side in SIDES)
    lines = [text.decode("latin-1").splitlines() for text in (old, new)]
    return different, [line for line in difflib.unified_diff(*lines, n=0, lineterm="")][2 : 2 + SHOWN]


def main():
    source, old, new, scratch = (Path(argument).absolute() for argument in sys.argv[1:])
    programs = {"old": old, "new": new}
    shutil.rmtree(scratch, ignore_errors=True)
    scratch.mkdir(parents=True)
    paths = list(inputs(source, scratch))
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda path: compare(path, programs, scratch), paths))
    for path, (different, shown) in zip(paths, results):
        if different:
            print(f"{path.parent.name}/{path.name}: {', '.join(different)}")
            for line in shown:
                print(f"    {line}")
    count = sum(1 for different, _ in results if different)
    print(f"same: {len(paths)} inputs through both programs, {count} differ", end="")
    print(f" (outputs of both: {scratch})" if count else "")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main())
