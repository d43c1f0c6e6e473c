"""The binary surface of both libraries against the one that is recorded: what is new is fine, what is gone or changed
is not. Then the comparison itself is tried on changes that it must find.

    abi.py SOURCE BUILD            compare; status 1: a change
    abi.py SOURCE BUILD --renew    record
"""

import json
import re
import shlex
import shutil
import subprocess
import sys
from pathlib import Path

SOURCE, BUILD = (Path(argument).absolute() for argument in sys.argv[1:3])
RENEW = sys.argv[3:] == ["--renew"]
HERE, MADE = SOURCE / "tests/abi", BUILD / "tests/abi"
SURFACES = {"engine": "tarvane", "vessel": "tarvane_vessel"}
MAPS = {"engine": BUILD / "engine/tarvane.map", "vessel": SOURCE / "vessel/surface/vessel.map"}
HEADERS = SOURCE / "include/tarvane"


def run(*command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False, **options)


def must(*command, **options):
    done = run(*command, **options)
    if done.returncode != 0:
        sys.exit(f"abi: {shlex.join(map(str, command))}\n{done.stderr}")
    return done.stdout


def surface(library, headers=HEADERS):
    """What it is as text, without the places of this machine and without what the headers do not say."""
    text = must("abidw", "--exported-interfaces-only", "--headers-dir", headers, "--drop-private-types",
                "--drop-undefined-syms", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs", "--no-elf-needed", "--no-parameter-names",
                "--type-id-style", "hash", library)  # fmt: skip
    return re.sub(r" path='(?:\.\./)+", " path='", text)


def changes(old, new):
    """What is gone or changed from one surface to another; empty: nothing. Additions don't count."""
    done = run("abidiff", "--no-added-syms", "--no-show-locs", "--suppressions", HERE / "grows.ini", old, new)
    if done.returncode & 3:
        sys.exit(f"abi: abidiff failed\n{done.stderr}")
    return done.stdout or "a change" if done.returncode else ""


def symbols(text):
    return set(re.findall("<elf-symbol name='([^']*)'", text))


def recorded(name):
    return HERE / f"{name}.abi"


def whole(name):
    """The surface of a library, with each name that it exports."""
    text = surface(MADE / f"libtarvane_abi_{name}.so")
    wanted = set(re.findall(r"^ *(\w+);$", MAPS[name].read_text(encoding="utf-8"), re.M))
    if symbols(text) != wanted:
        sys.exit(f"abi: {name}: exported, but not in what is compared: {sorted(wanted - symbols(text))}")
    return text


def record():
    for name in SURFACES:
        recorded(name).write_text(whole(name), encoding="utf-8")
        print(f"abi: recorded {recorded(name).relative_to(SOURCE)}")


def compare():
    found = 0
    for name, library in SURFACES.items():
        made = MADE / f"{name}.abi"
        text = whole(name)
        made.write_text(text, encoding="utf-8")
        change = changes(recorded(name), made)
        if change:
            found += 1
            print(f"abi: lib{library} is not what hosts were built for. A new number in CMakeLists.txt "
                  f"(TARVANE_{name.upper()}_ABI) and ./dev abi --renew, or as it was:\n{change}")  # fmt: skip
        else:
            print(f"abi: lib{library}: {len(symbols(text))} names, none gone or changed")
    return found


# ---- changes that must be found ----------------------------------------------------------------------------------


def rebuilt(planted, header, place, member):
    """The surface of the engine after a member was put before another one in a header."""
    folder = planted / "include"
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(HEADERS, folder / "tarvane")
    text = (folder / "tarvane" / header).read_text(encoding="utf-8")
    changed = text.replace(place, f"{member}\n{place}", 1)
    if changed == text:
        sys.exit(f"abi: {header} has no {place!r} any more, which a change was to be made at")
    (folder / "tarvane" / header).write_text(changed, encoding="utf-8")
    # The command that compiled it, with the other headers first. The engine's own assertions would refuse.
    commands = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
    command = next(each["command"] for each in commands if "tarvane_abi_engine" in each["command"]
                   and each["file"].endswith("/results.cpp"))  # fmt: skip
    words = shlex.split(command)
    original = BUILD / words[words.index("-o") + 1]
    words[words.index("-o") + 1] = str(planted / "results.o")
    must(words[0], f"-I{folder}", "-Dstatic_assert(...)=", *words[1:], cwd=BUILD)
    return original


def link(planted, name, objects, without=None):
    lines = MAPS["engine"].read_text(encoding="utf-8").splitlines()
    if without:
        lines = [line for line in lines if line.strip() != f"{without};"]
    (planted / "map").write_text("\n".join(lines), encoding="utf-8")
    library = planted / f"lib{name}.so"
    number = re.search(r"soname='([^']*)'", recorded("engine").read_text(encoding="utf-8"))[1]
    must("g++", "-shared", "-o", library, f"-Wl,-soname,{number}", *objects, f"-Wl,--version-script={planted / 'map'}",
         "-Wl,--unresolved-symbols=ignore-all")  # fmt: skip
    return library


def proof():
    """Names of the planted changes that were not judged as they should be."""
    planted = MADE / "planted"
    planted.mkdir(exist_ok=True)
    objects = sorted((MADE / "CMakeFiles/tarvane_abi_engine.dir").rglob("*.o"))
    if len(objects) < 5:
        sys.exit("abi: the objects of the engine's surface are not there")

    def judged(name, objects, headers=HEADERS, **options):
        file = planted / f"{name}.abi"
        file.write_text(surface(link(planted, name, objects, **options), headers), encoding="utf-8")
        return file

    plain = judged("plain", objects)
    gone = judged("gone", objects, without="GETFLANGERESULTS")

    def with_member(name, place):
        original = rebuilt(planted, "results.h", place, "    float planted;")
        others = [planted / "results.o" if path == original else path for path in objects]
        return judged(name, others, headers=planted / "include/tarvane")

    member = with_member("member", "    float t_given;")
    at_the_end = with_member("end", "} TARVANE_FLANGE_RESULTS;")
    return [name for name, wanted, found in (
        ("the same library", False, changes(recorded("engine"), plain)),
        ("a routine that is gone", True, changes(plain, gone)),
        ("a new routine", False, changes(gone, plain)),
        ("a new member of a structure", True, changes(plain, member)),
        ("one at the end of a block of results", False, changes(plain, at_the_end)),
        ("one that is gone there", True, changes(at_the_end, plain)),
    ) if wanted != bool(found)]  # fmt: skip


def main():
    missing = [tool for tool in ("abidw", "abidiff") if not shutil.which(tool)]
    if missing:
        print(f"abi: not compared: no {', '.join(missing)} (abigail-tools)", file=sys.stderr)
        return 77
    if RENEW:
        record()
        return 0
    if compare():
        return 1
    wrong = proof()
    for name in wrong:
        print(f"abi: misjudged: {name}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
