"""The folders of the engine see one another in one direction: every #include line goes to a folder further
down, and none out of the engine but to the standard library and, from the exports, to the public headers.

    layering_test.py REPOSITORY
"""

import re
import sys
from pathlib import Path

BOTTOM = ("frame", "host", "frame/files", "report")
MIDDLE = (*BOTTOM, "materials", "openings", "standards", "bolting")

# Each folder, from the bottom up, and what it sees besides itself: whole folders or single headers. A
# folder within a folder counts as one of its own.
ROOMS = {
    "frame": (),
    "host": ("frame/types.h", "frame/text.h", "frame/numbers.h"),
    "frame/files": ("frame", "host"),
    "report": ("frame", "host", "frame/files"),
    "materials": BOTTOM,
    "openings": BOTTOM,
    "standards": BOTTOM,
    "bolting": (*BOTTOM, "materials"),  # the limits of a bolt material
    "foundation": MIDDLE,
    "shell": MIDDLE,
    "external": MIDDLE,
    "toughness": MIDDLE,
    "flange": (*MIDDLE, "toughness"),  # heat treatment of the attached shell
    "frame/exports": (*MIDDLE, "foundation", "shell", "external", "toughness", "flange"),
}
PUBLIC_HEADERS_SEEN_BY = "frame/exports"
SYSTEM_HEADERS_SEEN_BY = re.compile(r"host/platform_\w+\.cpp")

SOURCES = {".h", ".cpp", ".inc"}
DIRECTIVE = re.compile(r"^[ \t]*#[ \t]*(?:include|include_next|import)\b[ \t]*(.*)$", re.M)
NAME = re.compile(r'"([^"]+)"|<([^>]+)>')


def includes(file):
    """Line, name and whether it is in quotation marks; no name for what is no plain include."""
    text = file.read_text(encoding="utf-8")
    for directive in DIRECTIVE.finditer(text):
        line = text.count("\n", 0, directive.start()) + 1
        name = NAME.match(directive[1])
        yield line, name and (name[1] or name[2]), bool(name and name[1])


def fault(engine, file, name, quoted):
    """What is wrong with an include line; None: nothing."""
    room = file.parent.as_posix()
    if name is None:
        return "is no plain include"
    if name.startswith("tarvane/"):
        return None if room == PUBLIC_HEADERS_SEEN_BY else "only the exports see the public headers"
    if not quoted:
        plain = re.fullmatch(r"[a-z_0-9]+", name) or SYSTEM_HEADERS_SEEN_BY.fullmatch(file.as_posix())
        return None if plain else "is not of the standard library"
    if ".." in Path(name).parts or not (engine / name).is_file():
        return "is no file of the engine, named from its root"
    target = Path(name).parent.as_posix()
    if target == room or target in ROOMS[room] or name in ROOMS[room]:
        return None
    return f"{room} does not see {target}"


def faults(repository):
    engine = repository / "engine"
    found = []
    rooms = set()
    for path in sorted(engine.rglob("*")):
        if path.suffix not in SOURCES:
            continue
        file = path.relative_to(engine)
        room = file.parent.as_posix()
        rooms.add(room)
        if room not in ROOMS:
            found.append(f"engine/{file}: the folder {room} is not in the table")
            continue
        for line, name, quoted in includes(path):
            wrong = fault(engine, file, name, quoted)
            if wrong:
                found.append(f"engine/{file}:{line}: {name}: {wrong}")
    found += [f"engine/{room} has no sources" for room in ROOMS if room not in rooms]
    # Above the public headers nothing sees the engine's own.
    for above in ("app", "vessel", "examples"):
        for path in sorted((repository / above).rglob("*")):
            if path.suffix not in SOURCES:
                continue
            for line, name, quoted in includes(path):
                own = quoted and any((folder / name).is_file() for folder in (path.parent, repository / above))
                if name and not own and (engine / name).is_file():
                    found.append(f"{path.relative_to(repository)}:{line}: {name}: is a header of the engine")
    return found


def faults_of_the_table():
    below = []
    for room, seen in ROOMS.items():
        for other in seen:
            if other not in below and Path(other).parent.as_posix() not in below:
                yield f"the table: {room} sees {other}, which is not below it"
        below.append(room)


def main():
    found = [*faults_of_the_table(), *faults(Path(sys.argv[1]))]
    for one in found:
        print(one)
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
