"""check_figures.py finds what is wrong with the tables: each fault below, put into a copy of them, is named.

  check_figures_test.py SOURCES
"""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SCRIPT = Path(__file__).with_name("check_figures.py")

# File, what is replaced at its first place, by what, and what the script says of it.
FAULTS = [
    ("materials_viii1.csv", "17.3, 16.7, 13.9", "17.3, 16.4, 13.9", "materials_viii1.csv: 2: 700: 16.4, where list-2001 has 16.7"),
    ("materials_viii1.csv", "checked    , list-2001", "published  ,          ",
     "materials_viii1.csv: 1: status: published, but every figure of it is confirmed: checked"),
    ("materials_viii1.csv", "checked    , list-2001", "checked    , metric-2021",
     'materials_viii1.csv: 1: its column checks is not "list-2001"'),
    ("checks/taken.csv", "materials_viii1,24,", "materials_viii1,1,",
     "materials_viii1.csv: 1: status: checked, but no other source confirms 100,"),
    ("moduli.csv", "published,,2007", "checked,tm-1-customary,2007",
     "moduli.csv: 1: status: checked, but no named source confirms "),
    ("checks/exceptions.csv", "materials_viii1,21,150,", "materials_viii1,21,200,",
     "materials_viii1.csv: 21: 150: "),
    ("bolts.csv", "0.126,1.25,0.8125,,0.625,0.875,,published,,9th edition",
     "0.126,1.25,0.8125,,0.625,0.875,,published,,", "bolts.csv: row 1: no edition"),
    # A decision of each kind that is no longer in the tables.
    ("materials_viii1.csv", "SA-387 11 2  , UCS , Plate              , K11789, 1 1/4Cr-1/2Mo-Si   ,            , 4       , "
     "1    , A     ,                 , 75     , 45   , CS-3", "SA-387 11 2  , UCS , Plate              , K11789, "
     "1 1/4Cr-1/2Mo-Si   ,            , 4       , 1    , A     ,                 , 75     , 45   , CS-2",
     "corrections.csv: materials_viii1 19 chart: 19 has CS-2, the decision CS-3"),
    ("chart_points.csv", "CS-2,300,9.0e-4,11806", "CS-2,300,9.0e-4,11900",
     "corrections.csv: chart_points CS-2 300 A 0.0009: CS-2 300 0.0009 has 11900, the decision 11806"),
    ("chart_points.csv", "CS-2,300,2.669e-3", "CS-2,300,5.0e-3",
     "corrections.csv: chart_points CS-2 300 A 0.005 (interpolated): CS-2 300 0.005 has 15927, the decision none"),
    ("chart_points.csv", "CS-2,700,1.0e-1", "HA-1,700,1.0e-1", " HA-1 has 6100, the decision none"),
    ("checks/corrections.csv", ",changed,165,100,16.7,", ",changed,125,100,20.0,",
     "corrections.csv: materials_viii1 125 225 100 F: changed, but it has what it had"),
    ("checks/corrections.csv", "not compared: ", "", "corrections.csv: expansion 7 200 and 850 F: not compared, without a"),
    ("checks/corrections.csv", "changed,2,850,", "left,2,850,", "corrections.csv: materials_viii1 2 850 F: no decision"),
]


def output(sources):
    run = subprocess.run([sys.executable, SCRIPT, sources], capture_output=True, text=True, encoding="utf-8")
    return run.returncode, run.stdout + run.stderr


def main():
    sources = Path(sys.argv[1])
    failures = []
    status, said = output(sources)
    if status != 0:
        failures.append(f"the tables as they are: {said}")
    if "expansion 7 200 and 850 F: not compared: " not in said:
        failures.append("what is not compared is not printed")
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder) / "sources"
        shutil.copytree(sources, copy)
        for name, text, by, fault in FAULTS:
            path = copy / name
            right = path.read_text(encoding="utf-8")
            if text not in right:
                failures.append(f"{name} does not have: {text}")
                continue
            path.write_text(right.replace(text, by, 1), encoding="utf-8")
            status, said = output(copy)
            if status != 1 or fault not in said:
                failures.append(f"expected: {fault}\nof {name} with {by}, said: {said}")
            path.write_text(right, encoding="utf-8")
    print("\n".join(failures) or f"{len(FAULTS)} faults found")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
