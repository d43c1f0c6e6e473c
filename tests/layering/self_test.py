"""layering_test.py finds nothing in the tree as it is, and each include line that is planted in a copy of it.

    self_test.py REPOSITORY SCRATCH
"""

import shutil
import subprocess
import sys
from pathlib import Path

REPOSITORY, SCRATCH = (Path(argument).absolute() for argument in sys.argv[1:])
COPY = SCRATCH / "tree"

# File, line that is planted at its head, and what the finding says; no finding where it is allowed.
PLANTED = [
    ("engine/host/services.cpp", '#include "frame/files/data_files.h"', "host does not see frame/files"),
    ("engine/host/platform_windows.cpp", '#include "frame/switches.h"', "host does not see frame"),
    ("engine/frame/units.cpp", '#include "host/services.h"', "frame does not see host"),
    ("engine/frame/files/data_files.cpp", '#include "report/lines.h"', "frame/files does not see report"),
    ("engine/report/lines.cpp", '#include "flange/state.h"', "report does not see flange"),
    ("engine/materials/charts.cpp", '#include "bolting/bolt_tables.h"', "materials does not see bolting"),
    ("engine/bolting/bolt_tables.cpp", '  #  include "flange/state.h"', "bolting does not see flange"),
    ("engine/shell/cone.cpp", '#include "external/state.h"', "shell does not see external"),
    ("engine/toughness/pwht.cpp", '#include "flange/state.h"', "toughness does not see flange"),
    ("engine/flange/state.h", '#include "frame/exports/exports.h"', "flange does not see frame/exports"),
    ("engine/flange/kernel.cpp", '#include "tarvane/tarvane.h"', "only the exports see the public headers"),
    ("engine/frame/switches.cpp", "#include <tarvane/tarvane.h>", "only the exports see the public headers"),
    ("engine/flange/kernel.cpp", '#include "../app/results.h"', "is no file of the engine"),
    ("engine/flange/kernel.cpp", '#include "results.h"', "is no file of the engine"),
    ("engine/flange/kernel.cpp", "#include <toml++/toml.h>", "is not of the standard library"),
    ("engine/flange/kernel.cpp", "#include <unistd.h>", "is not of the standard library"),
    ("engine/flange/kernel.cpp", "#include HEADER", "is no plain include"),
    ("engine/drawing/lines.cpp", "#include <cmath>", "the folder drawing is not in the table"),
    ("app/planted.cpp", '#include "flange/state.h"', "is a header of the engine"),
    ("engine/flange/kernel.cpp", '#include "toughness/pwht.h"', None),
    ("engine/report/lines.cpp", '#include "frame/files/data_files.h"', None),
    ("engine/frame/exports/exports.cpp", '#include "tarvane/convention.h"', None),
    ("engine/host/platform_linux.cpp", "#include <sys/types.h>", None),
    ("engine/flange/kernel.cpp", '// #include "frame/exports/exports.h"', None),
]

failures = []


def check(fine, *what):
    if not fine:
        failures.append(what)
        print("FAILED", *what)


def run(tree):
    test = Path(__file__).with_name("layering_test.py")
    return subprocess.run([sys.executable, test, tree], capture_output=True, text=True, check=False)


shutil.rmtree(COPY, ignore_errors=True)
for folder in ("engine", "app", "vessel", "examples"):
    if (REPOSITORY / folder).is_dir():
        shutil.copytree(REPOSITORY / folder, COPY / folder)
unchanged = run(COPY)
check(unchanged.returncode == 0 and not unchanged.stdout, "the tree as it is:", unchanged.stdout, unchanged.stderr)

for name, line, finding in PLANTED:
    file = COPY / name
    before = file.read_text(encoding="utf-8") if file.exists() else None
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(f"{line}\n{before or ''}", encoding="utf-8")
    done = run(COPY)
    if finding is None:
        check(done.returncode == 0, name, line, "is allowed:", done.stdout, done.stderr)
    else:
        check(done.returncode == 1 and done.stdout.count("\n") == 1 and name in done.stdout and
              finding in done.stdout, name, line, "is not found:", done.stdout, done.stderr)  # fmt: skip
    if before is None:
        file.unlink()
    else:
        file.write_text(before, encoding="utf-8")

# A folder without sources leaves its row of the table behind.
shutil.rmtree(COPY / "engine/foundation")
check("engine/foundation has no sources" in run(COPY).stdout, "a folder that is gone is not missed")
print(len(PLANTED) + 2, "trees,", len(failures), "failures")
sys.exit(1 if failures else 0)
