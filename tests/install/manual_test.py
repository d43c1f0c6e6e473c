"""The man page and the completion of bash, held against what the program says of itself.

    manual_test.py BUILD.JSON SCRATCH
"""

import json
import os
import pty
import re
import select
import shlex
import shutil
import subprocess
import sys
import time
import unittest
from pathlib import Path

BUILD = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
SCRATCH = Path(sys.argv[2]).absolute()
PREFIX = SCRATCH / "tree"
PROGRAM = PREFIX / BUILD["bin"] / "tarvane"
PAGE = PREFIX / "share/man/man1/tarvane.1"
SCRIPT = PREFIX / "share/bash-completion/completions/tarvane"


def run(*command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False, **options)


def help_of(*commands):
    return run(PROGRAM, *commands, "--help").stdout


def commands_in(text):
    """The subcommands of a help."""
    _, _, listed = text.partition("\nSubcommands:\n")
    return re.findall(r"^  ([a-z]\S*)", listed, re.M)


def every_command():
    for name in commands_in(help_of()):
        inner = commands_in(help_of(name))
        yield from ((name, other) for other in inner) if inner else [(name,)]


def options_in(text):
    return set(re.findall(r"(?<=[ ,])(--?[A-Za-z][\w-]*)", re.sub(r"(?m)^ {20,}.*$|(?<=\S) {2,}.*$", "", text)))


def setUpModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)
    done = run(BUILD["cmake"], "--install", BUILD["build"], "--prefix", PREFIX)
    assert done.returncode == 0, done.stderr


def tearDownModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)


class ManPage(unittest.TestCase):
    def test_every_command_and_option_is_in_its_section(self):
        text = PAGE.read_text(encoding="utf-8").replace("\\-", "-").replace("\\fB", "").replace("\\fR", "")
        sections = dict(re.findall(r"^\.SS (tarvane [a-z ]*[a-z]).*\n((?:(?!\.S[SH]).*\n)*)", text, re.M))
        commands = list(every_command())
        self.assertGreater(len(commands), 14)
        self.assertEqual(set(sections), {"tarvane " + " ".join(command) for command in commands})
        for command in commands:
            shown = options_in(help_of(*command)) - {"-h", "--help"}
            listed = set(re.findall(r"(?<![\w-])--?[A-Za-z][\w-]*", "\n".join(
                re.findall(r"^\.TP\n(.*)$", sections["tarvane " + " ".join(command)], re.M))))  # fmt: skip
            self.assertEqual(listed, shown, command)
        self.assertIn("--strict", options_in(help_of("run")))
        self.assertIn(f'"tarvane {BUILD["version"]}"', text)
        self.assertNotIn("complete-words", text)

    @unittest.skipUnless(shutil.which("man"), "no man")
    def test_the_formatter_has_nothing_to_say(self):
        done = run("man", "--warnings", "-l", "-Tutf8", PAGE, env={**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8"})
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("which must not exist yet", done.stdout)

    @unittest.skipUnless(shutil.which("mandoc"), "no mandoc")
    def test_mandoc_has_nothing_to_say(self):
        done = run("mandoc", "-Tlint", "-Wwarning", PAGE)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


@unittest.skipUnless(shutil.which("bash"), "no bash")
class Completion(unittest.TestCase):
    def ask(self, line):
        """The candidates for the last word of a line, and what the shell is to find by itself."""
        words = line.split(" ")
        script = (
            f"source {shlex.quote(str(SCRIPT))}; compopt() {{ echo \"compopt $2\"; }}\n"
            f"COMP_WORDS=({' '.join(map(shlex.quote, words))}); COMP_CWORD={len(words) - 1}\n"
            f'_tarvane {shlex.quote(str(PROGRAM))}; printf "%s\\n" "${{COMPREPLY[@]}}"'
        )
        done = run("bash", "--norc", "-c", script)
        self.assertEqual(done.stderr, "", line)
        return done.stdout.split("\n")[:-1] if done.stdout != "\n" else []

    def test_commands(self):
        self.assertEqual(self.ask("tarvane "), commands_in(help_of()))
        self.assertEqual(self.ask("tarvane exp"), ["explain"])
        self.assertEqual(self.ask("tarvane data "), ["check", "build", "import"])
        self.assertEqual(self.ask("tarvane nonsense"), [])

    def test_options_of_each_command(self):
        for command in every_command():
            asked = self.ask(f"tarvane {' '.join(command)} -")
            self.assertEqual(set(asked), options_in(help_of(*command)), command)
        self.assertEqual(self.ask("tarvane -"), ["--help", "-h", "--version"])

    def test_values(self):
        self.assertEqual(self.ask("tarvane run --detail "), ["summary", "checks", "full"])
        self.assertEqual(self.ask("tarvane run --detail = s"), ["summary"])
        self.assertEqual(self.ask("tarvane run --detail ="), ["summary", "checks", "full"])
        self.assertEqual(self.ask("tarvane new d"), ["drum"])
        self.assertEqual(self.ask("tarvane materials --units si --code VIII-2 --class "), ["1", "2"])
        self.assertEqual(self.ask("tarvane keys e"), ["external"])

    def test_files_are_left_to_the_shell(self):
        for line in ("tarvane run ", "tarvane run --html ", "tarvane batch a.toml ", "tarvane compare a.json b"):
            self.assertEqual(self.ask(line), ["compopt default", ""], line)
        for line in ("tarvane run --data ", "tarvane data build tables "):
            self.assertEqual(self.ask(line), ["compopt dirnames", ""], line)
        # All arguments are there.
        self.assertEqual(self.ask("tarvane run a.toml "), [])

    def test_names_that_can_be_explained(self):
        self.assertIn("mawp", self.ask("tarvane explain ma"))
        self.assertEqual(self.ask("tarvane explain flange.gasket.ty"), ["flange.gasket.type"])
        self.assertEqual(self.ask("tarvane explain mdmt.curve_t"), ["mdmt.curve_tables"])
        self.assertEqual(self.ask("tarvane explain flange[0].Sf"), ["flange[0].Sfa", "flange[0].Sfo"])
        for begun in ("", "vessel.", "flange.", "document.revisions."):
            names = self.ask(f"tarvane explain {begun}")
            self.assertGreater(len(names), 1, begun)
            for name in names[:: 1 + len(names) // 25]:
                self.assertEqual(run(PROGRAM, "explain", name).returncode, 0, name)

    def test_by_the_tabulator_key(self):
        """A shell as a user has it."""
        (SCRATCH / "one vessel.toml").write_text("", encoding="utf-8")
        main, other = pty.openpty()
        shell = subprocess.Popen(["bash", "--norc", "--noprofile", "-i"], stdin=other, stdout=other, stderr=other,
                                 cwd=SCRATCH, env={"PATH": f"{PROGRAM.parent}:{os.environ['PATH']}", "TERM": "dumb",
                                                   "PS1": "$ ", "INPUTRC": "/dev/null", "HOME": str(SCRATCH)})  # fmt: skip
        os.close(other)
        seen = ""

        def expect(text):
            nonlocal seen
            end = time.monotonic() + 60
            while text not in seen and time.monotonic() < end:
                if select.select([main], [], [], 1)[0]:
                    seen += os.read(main, 4096).decode()
            self.assertIn(text, seen)
            seen = ""

        def send(text):
            os.write(main, text.encode())

        send(f"source {shlex.quote(str(SCRIPT))}; echo rea''dy\n")
        expect("ready")
        send("tarvane expl\t")
        expect("tarvane explain ")
        send("\x15tarvane explain flange.gasket.ty\t")
        expect("flange.gasket.type ")
        send("\x15tarvane check one\t")
        expect("one\\ vessel.toml ")
        send("\x15exit\n")
        try:
            shell.wait(60)
        finally:
            shell.kill()
            os.close(main)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
