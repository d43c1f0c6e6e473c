"""The installed tree: moved elsewhere, used from a folder outside the source tree, by paths with a blank.

    install_test.py BUILD.JSON SCRATCH
"""

import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
from built_before import lay_ready

BUILD = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
SCRATCH = Path(sys.argv[2]).absolute()
PREFIX = SCRATCH / "moved here"
LIB, DATA, DOC = (PREFIX / BUILD[name] for name in ("lib", "data", "doc"))
PROGRAM = PREFIX / BUILD["bin"] / "tarvane"
HOSTS = DOC / "examples" / "hosts"
SOURCE = Path(BUILD["source"])
RECORDED = (SOURCE / "tests/clients/three_elements.txt").read_bytes()
# The line of the version in the installed data folder: who prints it has found that folder.
DATA_VERSION = f"{BUILD['version']}-installed"
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


def refused(source, build, *options):
    """What CMake says of a project that it can't configure."""
    try:
        cmake(source, build, *options)
    except AssertionError as error:
        return str(error)
    raise AssertionError(f"{options}: the project was configured")


# What the build tree knows of its installations.
MEMORY = [Path(BUILD["build"], name) for name in ("install_manifest.txt", "install_folders.txt")]
REMEMBERED = {path: path.read_bytes() if path.exists() else None for path in MEMORY}


def setUpModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)
    SCRATCH.mkdir(parents=True)
    run(BUILD["cmake"], "--install", BUILD["build"], "--prefix", SCRATCH / "first there")
    (SCRATCH / "first there").rename(PREFIX)
    (DATA / "data_version.txt").write_text(DATA_VERSION + "\n", encoding="utf-8")


def tearDownModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)
    for path, content in REMEMBERED.items():
        if content is None:
            path.unlink(missing_ok=True)
        else:
            path.write_bytes(content)


class Tree(unittest.TestCase):
    def dynamic(self, file):
        text = run(BUILD["readelf"], "-dW", file).decode()
        return {tag: re.findall(rf"\({tag}\).*\[(.*)\]", text) for tag in ("SONAME", "RUNPATH", "NEEDED")}

    def test_what_lies_in_it(self):
        for name in ("tarvane.h", "vessel.h", "tarvane.hpp", "fortran/tarvane_vessel.f90", "csharp/Tarvane.cs"):
            self.assertTrue((PREFIX / BUILD["include"] / "tarvane" / name).is_file(), name)
        built = {file.name for file in Path(BUILD["build"], "bin").iterdir()
                 if file.suffix.lower() in (".txt", ".bin")}  # fmt: skip
        self.assertLessEqual({"MATFILE1.BIN", "BOLTDATA.TXT", "PLWXML.TXT", "data_version.txt"}, built)
        self.assertEqual({file.name for file in DATA.iterdir()}, built)
        self.assertTrue((DOC / "host-guide.md").is_file())
        self.assertTrue((DOC / "LICENSE").is_file())
        self.assertIn("Bitstream Vera", (DOC / "LICENSE.font").read_text("utf-8"))
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


def probed(test, output, library, data=DATA_VERSION):
    """The lines of a probe: which file the library came from, its version, that of the data, a result to the bit."""
    lines = dict(line.split(" ", 1) for line in output.decode().splitlines())
    test.assertTrue(os.path.samefile(lines["library"], library), lines)
    test.assertEqual(lines["version"], BUILD["version"])
    test.assertEqual(lines["data"], data)
    test.assertIn(f"flange {lines['flange']}\n".encode(), RECORDED)


class Matrix(unittest.TestCase):
    """Programs in C and C++ over the installed libraries, shared and as archives, by CMake and by pkg-config."""

    def check(self, folder, way):
        surroundings = {} if way == "CMake" else {"LD_LIBRARY_PATH": LIB}
        for language in ("c", "cpp"):
            for linkage in ("shared", "static"):
                with self.subTest(way=way, language=language, linkage=linkage):
                    program = folder / f"probe_{language}_{linkage}"
                    # A program that carries the library is told the folder, as it may be anywhere.
                    told = [DATA] if linkage == "static" else []
                    probed(self, run(program, *told, **surroundings),
                           program if told else LIB / "libtarvane_vessel.so")  # fmt: skip
                    loaded = run("ldd", program, **surroundings).decode()
                    self.assertEqual("tarvane" in loaded, linkage == "shared", loaded)
                    print(f"{way}, {linkage}, {language}: as installed")
        for linkage in ("shared", "static"):
            with self.subTest(way=way, engine=linkage):
                program = folder / f"three_elements_{linkage}"
                self.assertEqual(run(program, DATA, **surroundings), RECORDED)
                loaded = re.findall(r"libtarvane\S* => (.*) \(", run("ldd", program, **surroundings).decode())
                self.assertEqual(len(loaded), linkage == "shared")
                for path in loaded:
                    self.assertTrue(os.path.samefile(path, LIB / "libtarvane.so"), path)

    def test_find_package(self):
        build = SCRATCH / "consumer build"
        cmake(SOURCE / "tests/install/consumer", build, f"-DCMAKE_PREFIX_PATH={PREFIX}", f"-DHOSTS={HOSTS}")
        run(BUILD["cmake"], "--build", build)
        self.assertEqual(Path((build / "data_folder").read_text(encoding="utf-8")), DATA)
        self.check(build, "CMake")
        if not BUILD["fortran"]:
            self.skipTest("Fortran is not tested: no compiler for this machine word")
        self.assertEqual(run(build / "three_elements_fortran", DATA), RECORDED)

    @unittest.skipUnless(shutil.which("pkg-config"), "no pkg-config")
    def test_pkg_config(self):
        def ask(*what):
            return shlex.split(run("pkg-config", *what, PKG_CONFIG_PATH=LIB / "pkgconfig").decode())

        folder = SCRATCH / "pkg-config build"
        folder.mkdir()
        probes, sources = SOURCE / "tests/install/consumer", (("probe_c_", "c", "probe.c"), ("probe_cpp_", "c++", "probe.cpp"))
        for linkage, suffix in (("shared", ""), ("static", "-static")):
            for name, compiler, source in (*sources, ("three_elements_", "c", HOSTS / "three_elements.c")):
                package = ("tarvane" if "three" in name else "tarvane-vessel") + suffix
                self.assertEqual(ask("--modversion", package), [BUILD["version"]])
                found = ask("--variable=datadir", package)
                self.assertTrue(os.path.samefile(found[0], DATA), found)
                run(BUILD[compiler], *shlex.split(BUILD[compiler + " flags"]), probes / source, "-o",
                    folder / (name + linkage), *ask("--cflags", "--libs", package))  # fmt: skip
        self.check(folder, "pkg-config")

    @unittest.skipUnless(shutil.which("pkg-config"), "no pkg-config")
    def test_the_commands_of_the_guides(self):
        """In a folder whose path has no blank, which they do not expect."""
        if len(set(BUILD["words"])) != 1:
            self.skipTest("the commands are for this machine's own word")
        with tempfile.TemporaryDirectory() as folder:
            hosts = Path(folder, "hosts")
            shutil.copytree(HOSTS, hosts)
            Path(folder, "prefix").symlink_to(PREFIX)
            prefix = f"{folder}/prefix"
            out = run("sh", "-e", "build.sh", folder=hosts, PREFIX=prefix).decode()
            wanted = Path(BUILD["build"], "tests/clients/calculate.txt").read_text(encoding="utf-8")
            # Those in C, C++, C++ with the library in it; Fortran and C# where their compilers are.
            self.assertGreaterEqual(out.count(wanted), 3, out)
            self.assertEqual(out.count(wanted), out.count("first check"), out)
            cmake(hosts, hosts / "build", f"-DCMAKE_PREFIX_PATH={prefix}")
            run(BUILD["cmake"], "--build", hosts / "build")
            self.assertEqual(run(hosts / "build" / "calculate").decode(), wanted)

    def test_a_project_of_another_word_or_version_is_refused(self):
        ours = 8 * BUILD["words"][0]
        theirs = 96 - ours
        for wanted in ("", "1.0"):
            words = refused(SOURCE / "tests/install/refused", SCRATCH / f"refused {wanted}", f"-DWORD={theirs // 8}",
                            f"-DWANTED={wanted}", f"-DCMAKE_PREFIX_PATH={PREFIX}")  # fmt: skip
            self.assertIn(f"{BUILD['version']} (of {ours} bits, and this project is of {theirs} bits)",
                          " ".join(words.split()))  # fmt: skip
        for wanted in ("0.9", "1.1", "2.0", "1.1...<2", "0.1...<1.0", "1.0.0.1"):
            refused(SOURCE / "tests/install/refused", SCRATCH / f"refused {wanted}", f"-DWORD={ours // 8}",
                    f"-DWANTED={wanted}", f"-DCMAKE_PREFIX_PATH={PREFIX}")  # fmt: skip
        for wanted in ("", "1", "1.0", "1.0.0;EXACT", "1.0...<2", "1.0...1.0"):
            cmake(SOURCE / "tests/install/refused", SCRATCH / f"taken {wanted}", f"-DWORD={ours // 8}",
                  f"-DWANTED={wanted}", f"-DCMAKE_PREFIX_PATH={PREFIX}")  # fmt: skip


class Hosts(unittest.TestCase):
    @unittest.skipUnless(len(set(BUILD["words"])) == 1, "Python has another machine word")
    def test_python(self):
        lines = run(sys.executable, "-B", HOSTS / "three_elements.py", PYTHONPATH=PREFIX / BUILD["python"])
        numbers = [line for line in lines.splitlines() if re.fullmatch(rb"\w+ \w+ [0-9A-F]{8}", line)]
        self.assertGreater(len(numbers), 8)
        self.assertLessEqual(set(numbers), set(RECORDED.splitlines()))


class Sources(unittest.TestCase):
    """The source tree in another project. What the tree under test has compiled by the same command is taken."""

    def configured(self, project, build, folder, *options):
        launcher = f"sh;{SOURCE / 'tests/install/built_before.sh'}"
        cmake(SOURCE / "tests/install" / project, build, f"-DTARVANE={SOURCE}", f"-DCMAKE_BUILD_TYPE={BUILD['type']}",
              "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", f"-DCMAKE_CXX_COMPILER_LAUNCHER={launcher}", *options)  # fmt: skip
        lay_ready(BUILD["build"], str(build), folder)

    def built(self, build, *targets):
        run(BUILD["cmake"], "--build", build, "--target", *targets)
        compiled = build / "compiled.txt"
        names = compiled.read_text(encoding="utf-8").splitlines() if compiled.exists() else []
        print(f"{build.name}: compiled again: {', '.join(names) or 'nothing'}")

    def test_add_subdirectory(self):
        build = SCRATCH / "parent build"
        self.configured("parent", build, "tarvane/")
        # Libraries only, without rules to install them.
        run(BUILD["cmake"], "--install", build, "--prefix", SCRATCH / "nothing")
        self.assertFalse((SCRATCH / "nothing").exists())
        self.built(build, "probe", "probe_static", "tarvane_built_data")
        library, = (build / "tarvane").rglob("libtarvane_vessel.so")
        probed(self, run(build / "probe"), library, BUILD["version"])
        probed(self, run(build / "probe_static", library.parent), build / "probe_static", BUILD["version"])

    def test_fetch_content_with_an_absolute_library_folder(self):
        build, prefix, lib = SCRATCH / "fetched build", SCRATCH / "fetched", SCRATCH / "libraries" / "lib"
        self.configured("fetched", build, "_deps/tarvane-build/", f"-DCMAKE_INSTALL_PREFIX={prefix}",
                        f"-DCMAKE_INSTALL_LIBDIR={lib}")  # fmt: skip
        self.built(build, "all")
        library, = (build / "_deps").rglob("libtarvane_vessel.so")
        probed(self, run(build / "probe"), library, BUILD["version"])

        run(BUILD["cmake"], "--install", build)
        self.assertFalse((prefix / "lib" / "cmake").exists())
        consumer = SCRATCH / "absolute consumer"
        cmake(SOURCE / "tests/install/consumer", consumer, f"-DCMAKE_PREFIX_PATH={lib.parent}", f"-DHOSTS={HOSTS}")
        run(BUILD["cmake"], "--build", consumer, "--target", "probe_c_shared")
        probed(self, run(consumer / "probe_c_shared"), lib / "libtarvane_vessel.so", BUILD["version"])
        if shutil.which("pkg-config"):
            words = shlex.split(run("pkg-config", "--cflags", "--libs", "tarvane-vessel",
                                    PKG_CONFIG_PATH=lib / "pkgconfig").decode())  # fmt: skip
            program = SCRATCH / "absolute probe"
            run(BUILD["c"], *shlex.split(BUILD["c flags"]), SOURCE / "tests/install/consumer/probe.c", *words, "-o",
                program)  # fmt: skip
            probed(self, run(program, LD_LIBRARY_PATH=lib), lib / "libtarvane_vessel.so", BUILD["version"])


class Uninstall(unittest.TestCase):
    def test_nothing_is_left(self):
        new, old = SCRATCH / "new prefix" / "deeper", SCRATCH / "old prefix"
        (old / "share" / "doc").mkdir(parents=True)
        (old / "bin").mkdir()
        kept = old / "bin" / "a program of others"
        kept.write_text("")
        for prefix in (new, old):
            run(BUILD["cmake"], "--install", BUILD["build"], "--prefix", prefix)
            self.assertTrue((prefix / BUILD["bin"] / "tarvane").exists())
            out = run(BUILD["cmake"], "--build", BUILD["build"], "--target", "uninstall").decode()
            self.assertRegex(out, "removed [1-9][0-9]+ files")
        self.assertEqual([str(path) for path in (SCRATCH / "new prefix").rglob("*")], [])
        self.assertFalse((SCRATCH / "new prefix").exists())
        left = sorted(str(path.relative_to(old)) for path in old.rglob("*"))
        self.assertEqual(left, ["bin", "bin/a program of others", "share", "share/doc"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
