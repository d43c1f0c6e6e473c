"""The comparison of two libraries finds nothing between a library and itself, and each of the faults that
are planted in another; the file of a difference shows it again.

    self_test.py TARVANE_SAME LIBRARY PLANTED DATA SCRATCH
"""

import re
import shutil
import subprocess
import sys
from pathlib import Path

PROGRAM, LIBRARY, PLANTED, DATA, SCRATCH = (Path(argument).absolute() for argument in sys.argv[1:])
failures = []


def check(fine, *what):
    if not fine:
        failures.append(what)
        print("FAILED", *what)


def run(old, new, *options):
    command = [PROGRAM, old, new, DATA, SCRATCH / "calls", *options]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    rows = {row[1]: row for row in re.finditer(r"^(\w+) +(\d+) calls +(\d+) differ(.*)$", done.stdout, re.M)}
    return done, rows


def replayed(output, routine):
    file = re.search(rf"--replay (\S+/{routine}\.\d+\.replay)", output)
    check(file, routine, "has no file to replay")
    if not file:
        return ""
    done = subprocess.run([PROGRAM, "--replay", file[1]], capture_output=True, text=True, errors="replace",
                          check=False)  # fmt: skip
    check(done.returncode == 1, routine, "replayed with status", done.returncode)
    check(f"{routine} is given" in done.stdout, routine, "is not shown:", done.stdout)
    return done.stdout


def itself():
    done, rows = run(LIBRARY, LIBRARY, "--calls", "60")
    check(done.returncode == 0, "the library differs from itself:", done.stdout)
    check(len(rows) > 90, "few routines:", len(rows))
    for row in rows.values():
        check(int(row[2]) > 20, row[1], "is called", row[2], "times")
        check(row[3] == "0", row[0])


def faults():
    planted = {"FACTOR_B": "results", "UG84_REDUCTION": "did not come back", "MODULUS": "did not come back",
               "SET_YIELD": "settings", "SET_MATERIAL_CLASS_NAMES": "tables", "SET_IOSTEP": "line store",
               "OPENUNIT": "files", "IS_MAIN_HOST": "messages"}  # fmt: skip
    shown = {}
    for routine, part in planted.items():
        calls = "200" if routine in ("FACTOR_B", "UG84_REDUCTION", "MODULUS") else "2000"
        done, rows = run(LIBRARY, PLANTED, "--calls", calls, "--only", routine, "--limit", "1")
        check(done.returncode == 1, routine, "ends with status", done.returncode)
        check(re.search(rf", {part} \d+", rows[routine][4]), rows[routine][0], "without", part)
        check(int(rows[routine][2]) >= 100, routine, "goes on to", rows[routine][2], "calls")
        for row in rows.values():
            check(row[1] in planted or row[3] == "0", "not planted:", row[0])
        shown[routine] = replayed(done.stdout, routine)

    old = re.search(r"^-  9 out \S+  ([0-9a-f]{8})$", shown["FACTOR_B"], re.M)
    new = re.search(r"^\+  9 out \S+  ([0-9a-f]{8})$", shown["FACTOR_B"], re.M)
    check(old and new and int(old[1], 16) ^ int(new[1], 16) == 1, "not one bit:", shown["FACTOR_B"])
    for routine, text in {"UG84_REDUCTION": "ended by signal 11",
                          "MODULUS": "did not come back in its time",
                          "SET_YIELD": "+  setup 200 ",
                          "SET_MATERIAL_CLASS_NAMES": "+  material classes 52",
                          "SET_IOSTEP": "+  line 1 ",
                          "OPENUNIT": "+file planted",
                          "IS_MAIN_HOST": "+end of the dialog"}.items():  # fmt: skip
        check(text in shown[routine], text, "is missing in", shown[routine])


def not_a_number():
    """Its sign is no difference."""
    done, rows = run(LIBRARY, PLANTED, "--calls", "400", "--only", "CC2286_BENDING")
    check(rows["CC2286_BENDING"][3] == "0", rows["CC2286_BENDING"][0])
    check(int(rows["CC2286_BENDING"][2]) >= 400, rows["CC2286_BENDING"][0])


def figure():
    """One figure of the data files."""
    other = SCRATCH / "other data"
    shutil.copytree(DATA, other, ignore=lambda folder, names: [
        name for name in names if not name.lower().endswith((".txt", ".bin"))])  # fmt: skip
    table = (other / "BOLTDATA.TXT").read_text(encoding="latin-1")
    check(table.count("0.302") > 0, "the root area of a 3/4 in. bolt is not in the table")
    (other / "BOLTDATA.TXT").write_text(table.replace("0.302", "0.303"), encoding="latin-1")
    done, rows = run(LIBRARY, LIBRARY, "--old-data", other, "--calls", "100", "--only", "GETBOLTDATA")
    check(done.returncode == 1 and rows["GETBOLTDATA"][3] != "0", "not found:", done.stdout)
    shown = replayed(done.stdout, "GETBOLTDATA")
    check(re.search(r"^-  3 out\(2\) 0\.303", shown, re.M), shown)
    check(re.search(r"^\+  3 out\(2\) 0\.30(2|1999)", shown, re.M), shown)


SCRATCH.mkdir(parents=True, exist_ok=True)
itself()
faults()
not_a_number()
figure()
shutil.rmtree(SCRATCH)
sys.exit(1 if failures else 0)
