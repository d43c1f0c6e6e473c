"""The installed tree: moved elsewhere, used from a folder outside the source tree, by paths with a blank.

    install_test.py BUILD.JSON SCRATCH
"""

import json
import os
import re
import shlex
import shutil
import struct
import subprocess
import sys
import unittest
from pathlib import Path

BUILD = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
SCRATCH = Path(sys.argv[2]).absolute()
PREFIX = SCRATCH / "moved here"
LIB, DATA, DOC = (PREFIX / BUILD[name] for name in ("lib", "data", "doc"))
PROGRAM = PREFIX / BUILD["bin"] / "tarvane"
HOSTS = DOC / "examples" / "hosts"
SOURCE = Path(BUILD["source"])
RECORDED = (SOURCE / "tests/clients/three_elements.txt").read_bytes()
TAKEN_AWAY = ("TARVANE_DATA", "TARVANE_LIBRARY", "LD_LIBRARY_PATH", "PYTHONPATH", "PKG_CONFIG_PATH")


def run(*command, folder=SCRATCH, **surroundings):
    """The output of a command; if it fails, the test fails."""
    environment = {name: value for name, value in os.environ.items() if name not in TAKEN_AWAY}
    environment.update({name: str(value) for name, value in surroundings.items()})
    done = subprocess.run([str(word) for word in command], cwd=folder, env=environment, capture_output=True,
                          check=False)  # fmt: skip
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout.decode()}\n{done.stderr.decode()}")
    return done.stdout


def cmake(source, build, *options):
    languages = (("C", "c"), ("CXX", "c++"), ("Fortran", "fortran"))
    compilers = [f"-DCMAKE_{name}_COMPILER={BUILD[key]}" for name, key in languages if BUILD[key]]
    flags = [f"-DCMAKE_{name}_FLAGS={BUILD[key + ' flags']}" for name, key in languages if BUILD[key]]
    run(BUILD["cmake"], "-S", source, "-B", build, "-G", BUILD["generator"], *compilers, *flags, *options)


def setUpModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)
    SCRATCH.mkdir(parents=True)
    run(BUILD["cmake"], "--install", BUILD["build"], "--prefix", SCRATCH / "first there")
    (SCRATCH / "first there").rename(PREFIX)


def tearDownModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)


class Tree(unittest.TestCase):
    def dynamic(self, file):
        text = run(BUILD["readelf"], "-dW", file).decode()
        return {tag: re.findall(rf"\({tag}\).*\[(.*)\]", text) for tag in ("SONAME", "RUNPATH", "NEEDED")}

    def test_what_lies_in_it(self):
        for name in ("tarvane.h", "vessel.h"):
            self.assertTrue((PREFIX / BUILD["include"] / "tarvane" / name).is_file(), name)
        built = {file.name for file in Path(BUILD["build"], "bin").iterdir()
                 if file.suffix.lower() in (".txt", ".bin")}  # fmt: skip
        self.assertLessEqual({"MATFILE1.BIN", "BOLTDATA.TXT", "PLWXML.TXT", "data_version.txt"}, built)
        self.assertEqual({file.name for file in DATA.iterdir()}, built)
        self.assertTrue((DOC / "host-guide.md").is_file())
        self.assertTrue((DOC / "LICENSE").is_file())
        self.assertFalse(list(PREFIX.rglob("__pycache__")))

    def test_programs_find_their_library_and_every_name_has_a_number_of_its_own(self):
        way = "$ORIGIN/" + os.path.relpath(LIB, PROGRAM.parent)
        for program in ("tarvane", "tarvane-data"):
            self.assertEqual(self.dynamic(PROGRAM.with_name(program))["RUNPATH"], [f"{way}:$ORIGIN"])
        for name in ("libtarvane", "libtarvane_vessel"):
            headers = self.dynamic(LIB / f"{name}.so")
            self.assertRegex(headers["SONAME"][0], rf"^{name}\.so\.[1-9][0-9]*$")
            self.assertEqual(headers["RUNPATH"], [])
            self.assertTrue((LIB / headers["SONAME"][0]).exists())
        # An engine of its own.
        self.assertFalse([name for name in headers["NEEDED"] if "tarvane" in name])

    def test_no_file_knows_where_it_was_built(self):
        for file in PREFIX.rglob("*"):
            if file.suffix in (".cmake", ".pc", ".py"):
                text = file.read_text(encoding="utf-8")
                for place in (BUILD["build"], BUILD["source"], "first there"):
                    self.assertNotIn(place, text, file)

    def test_the_program_runs(self):
        self.assertEqual(run(PROGRAM, "--version").decode().strip(), BUILD["version"])
        example = DOC / "examples" / "weld_neck_nps12.toml"
        built = run(Path(BUILD["build"], "bin", "tarvane"), "run", "--plain", example)
        self.assertIn(b"Results", built)
        self.assertEqual(run(PROGRAM, "run", "--plain", example), built)
        # By a symbolic link from elsewhere.
        link = SCRATCH / "linked"
        link.symlink_to(PROGRAM)
        self.assertEqual(run(link, "run", "--plain", example), built)


class Hosts(unittest.TestCase):
    def calculated(self, output):
        result = json.loads(output)
        self.assertEqual(result["program"], BUILD["version"])
        # The flange of the other hosts, to the bit.
        flange = result["flange"][0]["results"]
        for name in ("mawp", "map_nc"):
            bits = struct.pack(">f", flange[name]).hex().upper()
            self.assertIn(f"flange {name} {bits}\n".encode(), RECORDED)

    def test_find_package(self):
        build = SCRATCH / "consumer build"
        cmake(SOURCE / "tests/install/consumer", build, f"-DCMAKE_PREFIX_PATH={PREFIX}", f"-DHOSTS={HOSTS}")
        run(BUILD["cmake"], "--build", build)
        self.assertEqual(Path((build / "data_folder").read_text(encoding="utf-8")), DATA)
        self.assertEqual(run(build / "three_elements_c", DATA), RECORDED)
        self.calculated(run(build / "calculate"))
        if not BUILD["fortran"]:
            self.skipTest("Fortran is not tested: no compiler for this machine word")
        self.assertEqual(run(build / "three_elements_fortran", DATA), RECORDED)

    @unittest.skipUnless(shutil.which("pkg-config"), "no pkg-config")
    def test_pkg_config(self):
        def ask(*what):
            return shlex.split(run("pkg-config", *what, PKG_CONFIG_PATH=LIB / "pkgconfig").decode())

        def build(compiler, source, package):
            program = SCRATCH / f"host of {package}"
            run(BUILD[compiler], *shlex.split(BUILD[compiler + " flags"]), HOSTS / source, "-o", program,
                *ask("--cflags", "--libs", package))  # fmt: skip
            return program

        self.assertEqual(ask("--modversion", "tarvane"), [BUILD["version"]])
        folder = subprocess.run(
            ["pkg-config", "--variable=datadir", "tarvane"], check=True, capture_output=True, text=True,
            env={**os.environ, "PKG_CONFIG_PATH": str(LIB / "pkgconfig")},
        ).stdout.strip()  # fmt: skip
        self.assertTrue(os.path.samefile(folder.replace("\\ ", " "), DATA), folder)
        self.assertEqual(
            run(build("c", "three_elements.c", "tarvane"), DATA, LD_LIBRARY_PATH=LIB), RECORDED
        )
        self.calculated(
            run(build("c++", "calculate.cpp", "tarvane-vessel"), LD_LIBRARY_PATH=LIB)
        )

    @unittest.skipUnless(len(set(BUILD["words"])) == 1, "Python has another machine word")
    def test_python(self):
        lines = run(sys.executable, "-B", HOSTS / "three_elements.py", PYTHONPATH=PREFIX / BUILD["python"])
        numbers = [line for line in lines.splitlines() if re.fullmatch(rb"\w+ \w+ [0-9A-F]{8}", line)]
        self.assertGreater(len(numbers), 8)
        self.assertLessEqual(set(numbers), set(RECORDED.splitlines()))


class Parent(unittest.TestCase):
    def test_add_subdirectory(self):
        build = SCRATCH / "parent build"
        cmake(SOURCE / "tests/install/parent", build, f"-DTARVANE={SOURCE}")
        # Libraries only, without rules to install them.
        run(BUILD["cmake"], "--install", build, "--prefix", SCRATCH / "nothing")
        self.assertFalse((SCRATCH / "nothing").exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
