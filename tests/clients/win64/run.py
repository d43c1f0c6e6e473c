"""The 64-bit Windows program under Wine, held against the golden reports and against the program of this machine:
report, standard output, standard error and status of every golden input and example, the other commands, names
that are not ASCII, files that are written whole or not at all, and the archive, unpacked.

    run.py WINDOWS_BIN LINUX_BIN SCRATCH

SCRATCH is a folder of this script's own; the settings of Wine are kept there, and what differs is left there.
Status 0: all as it should be; 1: something differs; 77: not run, with the reason.
"""

import difflib
import os
import re
import shlex
import shutil
import subprocess
import sys
import zipfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[3]
sys.path.insert(0, str(SOURCE / "tests/same"))
from programs import LIMIT, SHOWN, outputs  # noqa: E402

COMPILER = "x86_64-w64-mingw32-gcc-posix"
COMMANDS = (
    "--version", "--help", "run --help", "keys", "explain t", "explain flange.P", "schema", "schema result",
    "schema keys", "materials SA-516 --units si", "materials SA-105 --code VIII-2", "flanges 300 8", "flanges PN16 100",
    "chart CS-2 -T 300 --A 0.001", "mdmt --curve B -t 1.5", "new drum", "new flange --units si", "check no_such_file.toml",
    "run", "chart NO-SUCH -T 1",
)  # fmt: skip
MOST_SHOWN = 20  # failures with their differences
MOST_DROPPED = 3  # see `dropped`
# What a clean Windows has.
SYSTEM = {"kernel32.dll", "msvcrt.dll", "ole32.dll", "shell32.dll", "advapi32.dll", "user32.dll"}
FOREIGN = "Größe Ω 容器"  # of no one code page


def unable(reason):
    print(f"win64: not run: {reason}", file=sys.stderr)
    sys.exit(77)


def wine():
    for place in (shutil.which("wine64"), "/usr/lib/wine/wine64", shutil.which("wine")):
        if place and os.access(place, os.X_OK):
            return place
    return unable("there is no Wine for 64-bit programs")


class Report:
    """What was held, and what failed."""

    def __init__(self):
        self.held = self.failed = 0

    def expect(self, what, wanted, found):
        self.held += 1
        if wanted == found:
            return
        self.failed += 1
        print(f"FAILED {what}")
        if self.failed > MOST_SHOWN:
            return
        texts = [
            text.decode("latin-1").splitlines() if isinstance(text, bytes) else [repr(text)] for text in (wanted, found)
        ]
        for line in list(difflib.unified_diff(*texts, "wanted", "found", n=0, lineterm=""))[: 2 + SHOWN]:
            print(f"    {line}")


def wrapper(path, wine_program, prefix, program):
    """A program of this machine that runs one of Windows."""
    path.write_text(
        f"#!/bin/sh\nLC_ALL=C.UTF-8 HOME={shlex.quote(str(prefix.parent))} WINEPREFIX={shlex.quote(str(prefix))} "
        "WINEDEBUG=-all WINEDLLOVERRIDES=winemenubuilder.exe=d "
        f'exec {shlex.quote(wine_program)} {shlex.quote(str(program))} "$@"\n',
        encoding="utf-8",
    )
    path.chmod(0o755)
    return path


DROPPED = []  # runs that Wine ended


def dropped(status, *said, what):
    """Now and then Wine ends a process before its first line: status 1, not a byte on either stream. No command of the
    program fails so; such a run is made again and named at the end, and more than a few of them are a failure."""
    if status != 1 or any(said):
        return False
    DROPPED.append(what)
    return True


def run(program, *arguments, cwd, **surroundings):
    for _ in range(2):
        done = subprocess.run([str(program), *arguments], cwd=cwd, capture_output=True, stdin=subprocess.DEVNULL,
                              timeout=LIMIT, env={**os.environ, **surroundings})  # fmt: skip
        if not dropped(done.returncode, done.stdout, done.stderr, what=" ".join([Path(program).name, *arguments])):
            break
    return done


def without_wine(text):
    """Standard error less what Wine says of its own processes, which share it; that a program fails, its status shows."""
    return b"".join(line for line in text.splitlines(keepends=True) if not line.startswith(b"wine: "))


def hold_inputs(report, windows, linux, scratch):
    paths = [*sorted((SOURCE / "tests/golden").glob("*.toml")), *sorted((SOURCE / "examples").glob("*.toml"))]

    def both(path):
        folder = scratch / path.parent.name / path.stem
        found = outputs(windows, path, folder / "windows")
        if dropped(int(found["status"] == b"1"), found["stdout"], found["stderr"], what=path.name):
            found = outputs(windows, path, folder / "windows again")
        return outputs(linux, path, folder / "linux"), found

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(both, paths))
    for path, (wanted, found) in zip(paths, results):
        golden = path.with_suffix(".txt")
        if path.parent.name == "golden":
            wanted["report"] = golden.read_bytes()
        found["stderr"] = without_wine(found["stderr"])
        for name, content in wanted.items():
            report.expect(f"{path.name}: {name}", content, found[name])
    return len(paths)


def hold_commands(report, windows, linux, scratch):
    for command in COMMANDS:
        wanted, found = (run(program, *command.split(), cwd=scratch) for program in (linux, windows))
        found.stderr = without_wine(found.stderr)
        for name in ("returncode", "stdout", "stderr"):
            report.expect(f"tarvane {command}: {name}", getattr(wanted, name), getattr(found, name))


def hold_names(report, wine_program, prefix, bin_folder, linux, scratch):
    """The program, its data, its input and its outputs below a folder that no code page of Windows can write."""
    folder = scratch / FOREIGN
    shutil.copytree(bin_folder, folder / "bin", ignore=shutil.ignore_patterns("*.dll", "*data.exe"))
    shutil.copytree(bin_folder, folder / "data", ignore=shutil.ignore_patterns("*.dll", "*.exe"))
    program = wrapper(folder / "tarvane", wine_program, prefix, folder / "bin/tarvane.exe")
    example = "shell_and_heads.toml"
    shutil.copy(SOURCE / "examples" / example, folder / f"{FOREIGN}.toml")
    wanted = run(linux, "run", str(folder / f"{FOREIGN}.toml"), "--report", str(folder / "wanted.txt"), cwd=scratch)
    plain = (folder / "wanted.txt").read_bytes()
    (folder / "charts").mkdir()
    backward = "Z:" + str(folder / f"{FOREIGN}.toml").replace("/", "\\")
    ways = {
        "beside the program": ([f"{FOREIGN}.toml"], {}),
        "--data": ([f"{FOREIGN}.toml", "--data", str(folder / "data")], {}),
        "the environment": ([f"{FOREIGN}.toml"], {"TARVANE_DATA": str(folder / "data")}),
        "backslashes": ([backward, "--charts", "charts"], {}),
    }
    for way, (arguments, surroundings) in ways.items():
        found = run(program, "run", *arguments, "--report", f"{FOREIGN}.txt", cwd=folder, **surroundings)
        report.expect(f"names, {way}: status", wanted.returncode, found.returncode)
        report.expect(f"names, {way}: stdout", wanted.stdout, found.stdout)
        written = folder / f"{FOREIGN}.txt"
        report.expect(f"names, {way}: report", plain, written.read_bytes() if written.exists() else b"(none)")
        written.unlink(missing_ok=True)
    missing = run(program, "run", f"{FOREIGN} 2.toml", cwd=folder)
    report.expect("names, a message", f"tarvane: cannot read {FOREIGN} 2.toml\n".encode(), missing.stderr)
    nowhere = run(program, "run", f"{FOREIGN}.toml", "--data", "Ωmega", cwd=folder)
    report.expect("names, no data", (2, "tarvane: there is no data folder Ωmega (named by --data)\n".encode()),
                  (nowhere.returncode, nowhere.stderr))  # fmt: skip


def hold_writing(report, windows, scratch):
    """Whole or not at all."""
    folder = scratch / "writing"
    folder.mkdir()
    shutil.copy(SOURCE / "examples/weld_neck_nps12.toml", folder / "in.toml")

    def write(target):
        done = run(windows, "run", "in.toml", "--report", target, cwd=folder)
        return done.returncode, done.stderr.split(b"\n")[-2] if done.stderr else b""

    (folder / "old.txt").write_bytes(b"older")
    status, _ = write("old.txt")
    report.expect("an old file is replaced", (0, True), (status, len((folder / "old.txt").read_bytes()) > 10000))
    (folder / "kept.txt").write_bytes(b"older")
    (folder / "kept.txt").chmod(0o444)
    report.expect("a file that is read-only", (2, b"tarvane: cannot write kept.txt: the file is read-only"),
                  write("kept.txt"))  # fmt: skip
    report.expect("it stays", b"older", (folder / "kept.txt").read_bytes())
    before = (folder / "in.toml").read_bytes()
    status, message = write("IN.TOML")
    report.expect("the input by another case", (2, b"tarvane: cannot write IN.TOML: it is the input file in.toml"),
                  (status, message))  # fmt: skip
    report.expect("it stays", before, (folder / "in.toml").read_bytes())
    report.expect("a folder", (2, b"tarvane: cannot write .: it is a folder"), write("."))
    status, message = write("no such folder/report.txt")
    report.expect("no folder", (2, True), (status, message.startswith(b"tarvane: cannot write no such folder/")))
    names = sorted(entry.name for entry in folder.iterdir())
    report.expect("nothing is left over", ["in.toml", "kept.txt", "old.txt"], names)


def hold_libraries(report, wine_program, prefix, bin_folder, scratch):
    """Both libraries beside each other in a host in C, and the program that makes the data files."""
    build = bin_folder.parent
    folder = scratch / "host"
    folder.mkdir()
    program = bin_folder / "side_by_side.exe"
    subprocess.run([COMPILER, "-std=c99", "-O1", "-Wall", "-Wextra", "-Werror", f"-I{SOURCE}/include",
                    f"-I{SOURCE}/examples/hosts", f"{SOURCE}/tests/vessel/side_by_side.c",
                    str(build / "engine/libtarvane.dll.a"), str(build / "vessel/libtarvane_vessel.dll.a"),
                    "-static", "-o", str(program)], check=True)  # fmt: skip
    done = run(wrapper(folder / "host", wine_program, prefix, program), str(bin_folder), cwd=folder)
    recorded = (SOURCE / "tests/clients/three_elements.txt").read_bytes()
    report.expect("both libraries in one host", (0, recorded), (done.returncode, done.stdout.replace(b"\r\n", b"\n")))

    made = folder / "data"
    made.mkdir()
    builder = wrapper(folder / "builder", wine_program, prefix, bin_folder / "tarvane-data.exe")
    done = run(builder, str(SOURCE / "data/sources"), str(made), cwd=folder)
    report.expect("the data files: status", (0, b""), (done.returncode, done.stderr))
    names = sorted(path.name for path in made.iterdir())
    report.expect("the data files: some", True, len(names) > 10)
    for name in names:
        report.expect(f"the data files: {name}", (bin_folder / name).read_bytes(), (made / name).read_bytes())


def needed_libraries(objdump, file):
    text = subprocess.run([objdump, "-p", str(file)], check=True, capture_output=True, text=True).stdout
    return {name.lower() for name in re.findall(r"DLL Name: (\S+)", text)}


def microsoft_host(target, include, output, libraries, *options):
    """A host as the tools of Microsoft make one; False: there are no tools that do as they do."""
    if not all(map(shutil.which, ("clang", "lld-link"))):
        return False
    folder = {"x86_64": "/usr/x86_64-w64-mingw32", "i686": "/usr/i686-w64-mingw32"}[target]
    compiled = output.with_suffix(".obj")
    subprocess.run(["clang", f"--target={target}-pc-windows-msvc", "-ffreestanding", "-O1", "-Wall", "-Werror", *options,
                    f"-I{include}", "-c", f"{SOURCE}/tests/clients/win64/microsoft_host.c", "-o", str(compiled)],
                   check=True)  # fmt: skip
    subprocess.run(["lld-link", "/nologo", "/entry:start", "/subsystem:console", "/nodefaultlib", "/safeseh:no", f"/out:{output}",
                    str(compiled), *map(str, libraries), f"{folder}/lib/libkernel32.a"], check=True)  # fmt: skip
    return True


def hold_archive(report, wine_program, prefix, build, scratch):
    """The archive as a user unpacks it: the program, hosts of both kinds of compilers, nothing else needed."""
    archives = list(build.glob("tarvane-*-windows.zip"))
    report.expect("the archive is there", 1, len(archives))
    if not archives:
        return
    folder = scratch / f"unpacked {FOREIGN}"
    with zipfile.ZipFile(archives[0]) as archive:
        archive.extractall(folder)
    top = folder / archives[0].stem
    own = {"tarvane.dll", "tarvane_vessel.dll"}
    files = [path for path in top.rglob("*") if path.suffix in (".exe", ".dll")]
    report.expect("the archive: its programs", {"tarvane.exe", "tarvane-data.exe", *own}, {path.name for path in files})
    for path in files:
        objdump = ("i686" if path.parent.name == "win32" else "x86_64") + "-w64-mingw32-objdump"
        report.expect(f"{path.name}: libraries that a clean Windows has not", set(),
                      needed_libraries(objdump, path) - SYSTEM - own)  # fmt: skip

    golden = SOURCE / "tests/golden/reverse_design.toml"
    program = wrapper(folder / "program", wine_program, prefix, top / "bin/tarvane.exe")
    run(program, "run", str(golden), "--report", "report.txt", cwd=folder)
    report.expect("the archive: a golden report", golden.with_suffix(".txt").read_bytes(),
                  (folder / "report.txt").read_bytes() if (folder / "report.txt").exists() else b"(none)")  # fmt: skip

    recorded = (SOURCE / "tests/clients/three_elements.txt").read_bytes()
    subprocess.run([COMPILER, "-std=c99", "-Wall", "-Werror", "-static", f"-I{top}/include",
                    f"{top}/share/doc/tarvane/examples/hosts/three_elements.c", str(top / "lib/libtarvane.dll.a"),
                    "-o", str(top / "bin/host.exe")], check=True)  # fmt: skip
    host = wrapper(folder / "host", wine_program, prefix, top / "bin/host.exe")
    done = run(host, "../share/tarvane", cwd=top / "bin")  # its own argument is of one code page
    report.expect("the archive: a host by MinGW", recorded, done.stdout.replace(b"\r\n", b"\n"))

    libraries = [top / "lib" / name for name in ("tarvane.lib", "tarvane_vessel.lib")]
    if not all(library.exists() for library in libraries):
        print("win64: the import libraries for Microsoft's linker are not there, as there is no llvm-dlltool")
    elif not microsoft_host("x86_64", top / "include", top / "bin/microsoft.exe", libraries, "-DVESSEL"):
        print("win64: the import libraries for Microsoft's linker are not tried: no clang or lld-link")
    else:
        done = run(wrapper(folder / "microsoft", wine_program, prefix, top / "bin/microsoft.exe"), cwd=folder)
        version = archives[0].stem.split("-")[1]
        report.expect("the archive: a host by lld-link", (0, f"{version} 7 ".encode()), (done.returncode, done.stdout))
    if (top / "win32/tarvane.lib").exists() and shutil.which("i686-w64-mingw32-objdump"):
        output = folder / "microsoft32.exe"
        if microsoft_host("i686", top / "include", output, [top / "win32/tarvane.lib"]):
            text = subprocess.run(["i686-w64-mingw32-objdump", "-p", str(output)], check=True, capture_output=True,
                                  text=True).stdout  # fmt: skip
            names = set(re.findall(r"^\s+[0-9a-f]+\s+\d+\s+([A-Za-z_]\w*)(?:@\d+)?$", text, re.M))
            report.expect("the 32-bit import library: names", set(),
                          {"RESET_ENGINE", "GETFLANGERESULTS", "GLOBALS_mp_G_NUSE_CASE2286"} - names)  # fmt: skip


def main():
    bin_folder, linux_folder, place = (Path(argument).absolute() for argument in sys.argv[1:])
    wine_program, linux = wine(), linux_folder / "tarvane"
    prefix, scratch = place / "prefix", place / "found"
    shutil.rmtree(scratch, ignore_errors=True)
    scratch.mkdir(parents=True)
    windows = wrapper(place / "tarvane", wine_program, prefix, bin_folder / "tarvane.exe")
    try:  # the first run makes the settings
        first = run(windows, "--version", cwd=scratch)
    except subprocess.TimeoutExpired:
        unable("Wine does not come to an end")
    if first.returncode != 0 or not first.stdout:
        unable("Wine does not run the program here: " + first.stderr.decode("latin-1").strip()[-200:])

    report = Report()
    count = hold_inputs(report, windows, linux, scratch)
    hold_commands(report, windows, linux, scratch)
    hold_names(report, wine_program, prefix, bin_folder, linux, scratch)
    hold_writing(report, windows, scratch)
    hold_libraries(report, wine_program, prefix, bin_folder, scratch)
    hold_archive(report, wine_program, prefix, bin_folder.parent, scratch)
    for what in DROPPED:
        print(f"win64: ended by Wine without a word, and run again: {what}")
    report.expect(f"at most {MOST_DROPPED} runs ended by Wine", True, len(DROPPED) <= MOST_DROPPED)
    print(f"win64: {count} inputs and {len(COMMANDS)} commands; {report.held - report.failed} passed, {report.failed} failed")
    return 1 if report.failed else 0


sys.exit(main())
