"""The engine calculates in single precision, on every platform alike: no single-precision function of the C
library but the exact ones, double operations in Newton's method alone, no fused ones.

    arithmetic_test.py NM OBJDUMP libtarvane_engine.a
"""

import re
import subprocess
import sys

NM, OBJDUMP, ARCHIVE = sys.argv[1:]

# Exact by definition, or worked out in double precision by frame/types.h.
EXACT = {"sqrt", "round", "trunc", "floor", "ceil", "fabs", "rint", "nearbyint"}
IN_DOUBLE = {"log", "log10", "exp", "pow", "sin", "cos", "acos", "cbrt"}
INEXACT = IN_DOUBLE | {"log2", "log1p", "exp2", "exp10", "expm1", "tan", "asin", "atan", "atan2", "sinh",
                       "cosh", "tanh", "hypot", "fmod", "remainder", "fma", "sincos"}  # fmt: skip


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, encoding="latin-1").stdout


undefined = set(re.findall(r" U (\w+)", output(NM, "-u", ARCHIVE)))
wrong = {name for name in undefined for plain in INEXACT if name in (plain + "f", plain + "l")}
wrong |= undefined & (INEXACT - IN_DOUBLE)
known = undefined & (IN_DOUBLE | {name + "f" for name in EXACT})

single = 0
function = ""
for line in output(OBJDUMP, "-dC", "--no-show-raw-insn", ARCHIVE).splitlines():
    heading = re.match(r"[0-9a-f]+ <(.*)>:$", line)
    if heading:
        function = heading[1]
        continue
    parts = line.split("\t")
    operation = parts[1].split(" ")[0] if len(parts) > 1 else ""
    if re.fullmatch(r"v?(add|sub|mul|div)[sp]s", operation):
        single += 1
    elif re.fullmatch(r"v?(add|sub|mul|div|sqrt|max|min)[sp]d|vfn?m(add|sub).*", operation):
        if not function.startswith("tarvane::NEWTON_SOLVE("):
            wrong.add(f"{operation} in {function}")

print(f"{single} operations in single precision; from the C library: {' '.join(sorted(known))}")
for what in sorted(wrong):
    print(what, file=sys.stderr)
sys.exit(bool(wrong) or single < 1000)
