"""The arguments of each exported routine are in one order: in the header, in the engine's definitions and in
the Fortran interfaces. Types alone would not distinguish two REALs.

    argument_order_test.py REPOSITORY
"""

import re
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
LONG_COMMENT = re.compile(r"/\*.*?\*/", re.S)

# Fortran does not distinguish C and c, D2 and d2.
FORTRAN_NAMES = {("SHLINT", "C"): "cf", ("SHLINT", "d2"): "dd2",
                 ("SHELL_REPORT", "C"): "cf", ("SHELL_REPORT", "d2"): "dd2",
                 ("COMPUTE_FAILURE_CA_DIV1", "C"): "cf", ("COMPUTE_FAILURE_CA_DIV1", "d2"): "dd2"}  # fmt: skip

failures = []


def check(fine, *what):
    if not fine:
        failures.append(" ".join(map(str, what)))


def arguments(text):
    """Pairs of type and name; the name is empty where there is none."""
    pairs = []
    for argument in text.split(","):
        argument = " ".join(argument.split())
        if argument in ("", "void"):
            continue
        found = re.fullmatch(r"(.*[ *])(\w+)", argument)
        unnamed = found is None or re.fullmatch(r"(int32_t|float|char|void)", found[2])
        kind = argument if unnamed else found[1]
        pairs.append((kind.replace(" ", ""), "" if unnamed else found[2]))
    return pairs


def routines(files, end, keep_comments=False):
    found = {}
    for file in files:
        text = file.read_text(encoding="latin-1")
        text = LONG_COMMENT.sub(lambda m: m[0][2:-2] if keep_comments else " ", text)
        text = re.sub(r"//[^\n]*", "", text)
        for name, given in re.findall(r"TARVANE_CALL\s+([A-Z]\w+)\s*\(([^{};]*?)\)\s*" + end, text):
            found[name] = arguments(given)
    return found


def fortran_interfaces():
    found = {}
    for file in sorted((ROOT / "fortran").glob("*.inc")):
        text = re.sub(r"![^\n]*", "", file.read_text(encoding="latin-1"))
        text = re.sub(r"&\s*\n\s*", " ", text)
        for given, name, body in re.findall(
            r"\n\s*(?:subroutine|function) \w+\s*\(([^)]*)\)[^\n]*?bind\(c, name=\"(\w+)\"\)(.*?)\n\s*end ",
            text, re.S,
        ):  # fmt: skip
            declared = {}
            for line in body.splitlines():
                attributes, _, names = line.partition("::")
                if "import" not in attributes:
                    declared.update(dict.fromkeys(re.findall(r"\w+", names), attributes))
            found[name] = [(word, declared[word]) for word in re.findall(r"\w+", given)]
    return found


def intent(kind):
    if "*" not in kind:
        return "value"
    return "intent(in)" if kind.startswith("const") or kind == "void*const*" else "intent(inout)"


header = routines(sorted((ROOT / "include/tarvane").glob("*.h")), ";")
engine = routines(sorted((ROOT / "engine/frame/exports").glob("*.cpp")), r"\{", keep_comments=True)
fortran = fortran_interfaces()
listed = re.findall(r"^TARVANE_ROUTINE\((\w+),", (ROOT / "engine/frame/exports/exports.def.inc").read_text(), re.M)
check(len(listed) > 90, len(listed), "routines in the list")

for name in listed:
    check(name in header and name in engine and name in fortran, name, "is missing somewhere")
    if failures:
        break
    given = header[name]
    check([kind for kind, _ in given] == [kind for kind, _ in engine[name]], name, "types of the engine")
    for at, (kind, argument) in enumerate(given):
        check(argument, name, "argument", at + 1, "has no name in the header")
        inside = engine[name][at][1]
        check(inside in ("", argument), name, "argument", at + 1, argument, "is", inside, "in the engine")
    check(len(fortran[name]) == len(given), name, len(fortran[name]), "arguments in Fortran")
    for (kind, argument), (word, attributes) in zip(given, fortran[name]):
        wanted = FORTRAN_NAMES.get((name, argument), argument.lower())
        check(word == wanted, name, argument, "is", word, "in Fortran")
        check(intent(kind) in attributes or "void" in kind, name, argument, "is", attributes, "in Fortran")

for failure in failures:
    print(failure, file=sys.stderr)
print(f"{len(listed)} routines")
sys.exit(bool(failures))
