"""The commands that the documents list, run as they are written.

A command begins with `tarvane `, in a block or in running text. Names in capitals stand for what a user puts there, brackets
for what can be left out, a bar for a choice: each choice is run, with all that is in brackets and without. A block of a page
whose fence names a file is written first, so that a page can be followed from its beginning to its end.
"""
import os
import re
import shlex
import shutil
import subprocess
from pathlib import Path

# Commands of other programs in blocks, and who runs them. The beginning of a line.
ELSEWHERE = {
    "./dev ": "needs the machine as a whole; the continuous integration runs its actions (.ci/run)",
    "cmake --preset": "configures and builds the tree that this test is part of",
    "cmake --build": "configures and builds the tree that this test is part of",
    "cmake --install": "tests/install installs the tree",
    "cc host.c": "tests/install builds hosts by pkg-config against the installed tree",
    "c++ calculate.cpp": "tests/install builds hosts by pkg-config against the installed tree",
    "gfortran PREFIX": "tests/install compiles the installed module",
    "PYTHONPATH=PREFIX": "tests/install runs the installed package",
    "pip ": "tests/wheel builds and installs the wheel",
    'python3 -c "import tarvane': "tests/wheel imports the installed package",
    "export TARVANE_LIBRARY": "python/tests set the same variables",
    "python3 examples/hosts": "tests/install and python/tests run this host",
    "cc calculate.c": "tests/install builds these hosts by pkg-config against the installed tree",
    "c++ -std=c++17 calculate.cpp": "tests/install builds these hosts by pkg-config against the installed tree",
    "gfortran $PREFIX": "tests/install builds these hosts by pkg-config against the installed tree",
    "./calculate_": "tests/install runs these hosts",
    "mcs ": "tests/clients compiles and runs the host in C#",
    "mono ": "tests/clients compiles and runs the host in C#",
    "mkdir tarvane-windows": "needs a build for Windows; tests/clients/win64 runs the program beside its data files",
    "i686-w64-mingw32-gcc": "needs the 32-bit compiler for Windows; tests/clients/win32 builds the host",
    "dask ": "a cluster's processes that do not end; python/tests starts scheduler and workers",
}
# Fences of commands; a block without a language may have some, too.
SHELLS = ("", "sh", "shell", "bash", "console")
# Commands of tarvane that are not run as they are written.
NOT_AS_WRITTEN = {
    "tarvane serve": "a server that does not end: only its options are checked here; tests/serve starts it",
}
# Asks for options, though its help calls none of them required.
MORE_THAN_NAME = [["mdmt"]]
# What stands for a file or a value; after an option its own meaning.
VALUES = {"FILE.toml": "a.toml", "FILE": "a.toml", "PATH...": "a.toml b.toml", "NAME": "t",
          "N": "2", "DIR": "results", "PERCENT": "1", "FOLDER": "folder", "KEY": "t"}
AFTER = {"--data": "{data}", "--html": "out.html", "--pdf": "out.pdf", "--json": "out.json", "--csv": "out.csv",
         "--report": "out.txt", "-o": "new.toml", "--charts": "charts"}
COMPARED = {"A": "a.toml", "B": "b.toml"}
# Accepted: all passes; something fails its checks, or differs. 3 of compare: a verdict got worse.
FINE = {"compare": (0, 1, 3)}


class Page:
    """Blocks that are files, and commands, in their order."""

    def __init__(self, name, text):
        self.name, self.steps = name, []
        fence = None
        for line in text.splitlines():
            if line.startswith("```"):
                if fence is None:
                    fence = line[3:].split() or [""]
                    block = []
                else:
                    if len(fence) == 2:
                        self.steps.append(("file", fence[1], "\n".join(block) + "\n"))
                    fence = None
                continue
            if fence is not None:
                block.append(line)
                self.line(line, fence)
            else:
                for command in re.findall(r"`(tarvane [^`]+)`", line):
                    # "tarvane = 1" is a key of input files
                    if not command.startswith("tarvane ="):
                        self.steps.append(("inline", command, ""))
                if re.match(r"    (dask|tarvane) ", line):
                    self.line(line.strip(), ["sh"])

    def line(self, line, fence):
        shown = line[2:] if line.startswith("$ ") else line
        if shown.startswith("tarvane ") and (line.startswith("$ ") or fence[0] in SHELLS) and "=" not in shown[:11] \
                and not shown.startswith("tarvane is "):
            self.steps.append(("command", shown, ""))
            return
        elif fence[0] in SHELLS and re.match(
                r"(\./|cmake |ctest |cc |c\+\+ |gcc |g\+\+ |gfortran |pip |python3 |export |dask |mkdir |apt |dpkg |"
                r"make |mcs |mono |wget |curl |[A-Z_]+=\S+ |\w+-w64-mingw32)", shown):
            self.steps.append(("other", shown, ""))
        elif self.steps and self.steps[-1][0] == "command":
            kind, command, said = self.steps[-1]
            self.steps[-1] = (kind, command, said + line + "\n")


def variants(command):
    """A line with brackets and bars without anything in brackets, and with all of it; each choice once."""
    bare = full = command
    while "[" in bare:
        bare = re.sub(r"\s*\[[^\[\]]*\]", "", bare)
    full = " ".join(re.sub(r"[\[\]]", " ", full).split())
    made = []
    for one in dict.fromkeys((" ".join(bare.split()), full)):
        words = [word.split("|") if re.fullmatch(r"[\w.-]+(\|[\w.-]+)+", word) else [word] for word in one.split(" ")]
        for place in range(max(len(word) for word in words)):
            made.append(" ".join(word[min(place, len(word) - 1)] for word in words))
    return list(dict.fromkeys(made))


class Runner:
    def __init__(self, root, program, data, scratch):
        self.root, self.program, self.data, self.scratch = root, program, data, scratch
        self.helps, self.faults, self.left_out, self.count = {}, [], {}, 0
        self.weasyprint = shutil.which("weasyprint") is not None
        self.made_pdf = False
        self.done = set()

    def help_of(self, command):
        if command not in self.helps:
            run = subprocess.run([self.program, *command, "--help"], capture_output=True, text=True)
            usage = f"Usage: tarvane {' '.join(command)} "
            self.helps[command] = run.stdout if run.returncode == 0 and usage in run.stdout + " " else ""
        return self.helps[command]

    def fault(self, page, command, reason):
        self.faults.append(f"{page}: {command}: {reason}")

    def leave_out(self, command, reason):
        self.left_out.setdefault(reason, []).append(command)

    def follow(self, page):
        folder = self.scratch / re.sub(r"\W", "_", page.name)
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        # with what `--strict` asks for
        for name, example, more in (("a.toml", "e4_16_1_flange", "ci = 0\nce = 0\nE = 1.0\n"),
                                    ("b.toml", "e4_3_1_cylinder", "")):
            text = (self.root / "docs" / "examples" / f"{example}.toml").read_text("utf-8")
            (folder / name).write_text('edition = "current"\n' + text + more, "utf-8")
        (folder / "charts").mkdir()
        # What the text names is run after the blocks, with the data that they made.
        for kind, text, content in sorted(page.steps, key=lambda step: step[0] == "inline"):
            if kind == "file":
                (folder / text).write_text(content, "utf-8")
            elif kind == "other":
                self.other(page, text)
            else:
                self.tarvane(page, folder, text, content if kind == "command" else None)

    def other(self, page, line):
        reason = next((reason for start, reason in ELSEWHERE.items() if line.startswith(start)), None)
        if line.startswith(("cc examples/", "gfortran fortran/", "LD_LIBRARY_PATH=build/release/bin ./host")):
            return self.host(page, line)
        if reason is None:
            self.fault(page.name, line, "no test runs it")
        else:
            self.leave_out(line, reason)

    def host(self, page, line):
        """Compiles and runs the example hosts from the tree, against the libraries beside the program."""
        bin_folder = self.program.parent
        words = line.split()
        if words[0] in ("cc", "gfortran") and shutil.which(words[0]) is None:
            return self.leave_out(line, f"no {words[0]} here")
        library = (bin_folder / "libtarvane.so").resolve()
        if not library.exists():
            return self.leave_out(line, "no shared library beside the program")
        if b"__asan_init" in library.read_bytes():
            return self.leave_out(line, "the library of this build is sanitized")
        out = self.scratch / "host"
        made = line.replace("build/release/bin", str(bin_folder)).replace("-o host", f"-o {out}").replace("./host", str(out))
        if words[0] == "gfortran":
            made += f" -J {self.scratch}"
        if words[0].startswith("LD_LIBRARY_PATH") and not out.exists():
            return self.leave_out(line, "the host was not compiled")
        self.count += 1
        run = subprocess.run(made, shell=True, cwd=self.root, capture_output=True, text=True, errors="replace")
        if run.returncode != 0:
            self.fault(page.name, line, f"status {run.returncode}: {run.stderr.strip()[-400:]}")
        if words[0].startswith("LD_LIBRARY_PATH"):
            out.unlink()

    def tarvane(self, page, folder, command, shown):
        written_out = shown is not None
        server = next((reason for start, reason in NOT_AS_WRITTEN.items() if command.startswith(start)), None)
        for one in variants(command):
            words = shlex.split(one.split(" | ")[0])[1:]
            if not self.options_exist(page, one, words):
                continue
            if server:
                self.leave_out(one, server)
            elif all(word.islower() and not word.startswith("-") for word in words) and \
                    not written_out and self.is_name_only(words):
                pass # the name of a command; its help was asked for
            elif not written_out and self.is_name_only(words[:1]) and \
                    all(word.startswith("-") or before.startswith("-")
                        for before, word in zip(words, words[1:])):
                pass # a command with the names of options
            elif written_out or one not in self.done:
                self.done.add(one)
                self.run(page, folder, one, shown or "")

    def is_name_only(self, words):
        """A command that asks for more than its name, like `tarvane run`."""
        text = self.help_of(tuple(words))
        return bool(text) and (words in MORE_THAN_NAME or "REQUIRED" in text or "Subcommands" in text or "SUBCOMMAND" in text)

    def options_exist(self, page, command, words):
        for depth in (2, 1):
            text = self.help_of(tuple(words[:depth])) if len(words) >= depth else ""
            if text:
                break
        if not text:
            self.fault(page.name, command, "no such command")
            return False
        absent = [word for word in words if word.startswith("-") and
                  not re.search(r"(?<![\w-])" + re.escape(word) + r"(?![\w-])", text)]
        for word in absent:
            self.fault(page.name, command, f"no option {word}")
        return not absent

    def run(self, page, folder, command, shown):
        words, made = shlex.split(command.split(" | ")[0])[1:], []
        for before, word in zip([""] + words, words):
            if before in AFTER and re.fullmatch(r"[A-Z]+", word):
                made.append(AFTER[before].format(data=self.data))
            elif word in VALUES:
                made += VALUES[word].split()
            elif words[0] == "compare" and word in COMPARED:
                made.append(COMPARED[word])
            else:
                made.append(word)
        if "--pdf" in made:
            if not self.weasyprint:
                return self.leave_out(command, "no weasyprint here")
            if self.made_pdf:
                return self.leave_out(command, "another command made a PDF, which takes seconds")
            self.made_pdf = True
        for name in ("results", "new.toml"):
            shutil.rmtree(folder / name, ignore_errors=True)
            (folder / name).unlink(missing_ok=True)
        if "plant" in made:
            (folder / "plant").mkdir(exist_ok=True)
            shutil.copy(folder / "a.toml", folder / "plant")
        if made[0] == "batch" and "--resume" in made:
            first = [word for word in made if word != "--resume"]
            subprocess.run([self.program, *first], cwd=folder, capture_output=True)
        shell = " ".join(shlex.quote(word) for word in [str(self.program), *made])
        if " | " in command:
            shell += " | " + command.split(" | ", 1)[1]
        self.count += 1
        own = folder / "data"
        environment = dict(os.environ, TARVANE_DATA=str(own if own.exists() else self.data))
        run = subprocess.run(["bash", "-c", shell], cwd=folder, capture_output=True, text=True, timeout=120, env=environment,
                             input=(folder / "a.toml").read_text("utf-8") if "/dev/stdin" in made else "")
        # A page may show how a command is refused: then in these words.
        refused = run.returncode == 2 and run.stderr.strip() != "" and \
            all(line in shown for line in run.stderr.strip().splitlines())
        if run.returncode not in FINE.get(made[0], (0, 1)) and not refused:
            self.fault(page.name, command, f"status {run.returncode}: {(run.stderr or run.stdout).strip()[-400:]}")
