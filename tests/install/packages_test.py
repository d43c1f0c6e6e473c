"""The packages of Debian, held against the installed tree that they are made of.

    packages_test.py BUILD.JSON SCRATCH
"""

import filecmp
import functools
import gzip
import json
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

BUILD = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
SCRATCH = Path(sys.argv[2]).absolute()
TREE, PACKAGES = SCRATCH / "tree", SCRATCH / "packages"
LIBRARIES = {"libtarvane.so": "libtarvane1", "libtarvane_vessel.so": "libtarvane-vessel1"}
NAMES = {*LIBRARIES.values(), "tarvane", "tarvane-data", "libtarvane-dev", "tarvane-doc", "python3-tarvane"}


def run(*command):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}\n{done.stderr}")
    return done.stdout


def files(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_symlink() or not path.is_dir()}


def is_program(path):
    return path.is_file() and not path.is_symlink() and path.read_bytes()[:4] == b"\x7fELF"


@functools.cache
def owners_of(library):
    """Packages, of several architectures."""
    return {line.split(":")[0] for line in run("dpkg-query", "-S", f"*/{library}").splitlines()}


def setUpModule():
    missing = [tool for tool in ("dpkg-deb", "dpkg-shlibdeps", "dpkg-query") if not shutil.which(tool)]
    if missing:
        raise unittest.SkipTest("the packages are not tested: no " + ", ".join(missing))
    shutil.rmtree(SCRATCH, ignore_errors=True)
    run(BUILD["cmake"], "--install", BUILD["build"], "--prefix", TREE / "usr")
    config = Path(BUILD["build"], "CPackConfig.cmake")
    run(BUILD["cpack"], "-G", "DEB", "--config", config, "-B", PACKAGES, "-D", "CPACK_DEBIAN_COMPRESSION_TYPE=none")
    (SCRATCH / "unpacked").mkdir()
    for package in PACKAGES.glob("*.deb"):
        name = run("dpkg-deb", "-f", package, "Package").strip()
        run("dpkg-deb", "-R", package, SCRATCH / "unpacked" / name)


def tearDownModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)


class Packages(unittest.TestCase):
    def setUp(self):
        self.roots = {path.name: path for path in (SCRATCH / "unpacked").iterdir()}
        self.contents = {name: {file for file in files(root) if not file.startswith("DEBIAN/")}
                         for name, root in self.roots.items()}  # fmt: skip

    def fields(self, name):
        text = (self.roots[name] / "DEBIAN/control").read_text(encoding="utf-8")
        return dict(re.findall(r"^([\w-]+): (.*)$", text, re.M))

    def needs(self, name):
        return {each.split()[0]: each for each in re.split(", *", self.fields(name).get("Depends", "")) if each}

    def test_each_installed_file_is_in_one_package_as_it_is(self):
        self.assertEqual(set(self.roots), NAMES)
        own = set()  # what a package has beside them
        places = {}
        for name, contents in self.contents.items():
            own |= {f"usr/share/doc/{name}/{file}" for file in ("copyright", "changelog.gz")}
            for file in contents:
                self.assertNotIn(file, places)
                places[file] = self.roots[name] / file
        self.assertLessEqual(own, set(places))
        installed = {re.sub(r"(/man/.*)", r"\1.gz", file): TREE / file for file in files(TREE)}
        self.assertEqual(set(places) - own, set(installed))
        self.assertGreater(len(installed), 80)
        for file, path in installed.items():
            packed = places[file]
            if path.is_symlink():
                self.assertEqual(os.readlink(packed), os.readlink(path), file)
            elif "/man/" in file:
                self.assertEqual(gzip.decompress(packed.read_bytes()), path.read_bytes(), file)
            elif not is_program(path):  # those are stripped
                self.assertTrue(filecmp.cmp(packed, path, shallow=False), file)

    def test_each_package_has_the_licences_of_its_files(self):
        for name, root in self.roots.items():
            text = (root / f"usr/share/doc/{name}/copyright").read_text(encoding="utf-8")
            self.assertTrue(text.startswith("MIT License"), name)
            self.assertIn("tarvane-drawing.ttf", text)
            self.assertIn("Bitstream Vera is\na trademark", text)

    def test_libraries_are_packages_by_the_number_of_their_surface(self):
        lib = f"usr/{BUILD['lib']}"
        for plain, package in LIBRARIES.items():
            library = next(path for path in self.roots[package].rglob(plain + ".*.*") if not path.is_symlink())
            soname = re.search(r"SONAME.*\[(.*)\]", run(BUILD["readelf"], "-dW", library))[1]
            self.assertEqual(package, soname.replace("_", "-").replace(".so.", ""))
            self.assertIn(f"{lib}/{soname}", self.contents[package])
            self.assertIn(f"{lib}/{plain}", self.contents["libtarvane-dev"])
            self.assertNotIn(f"{lib}/{plain}", self.contents[package])
            listed = (self.roots[package] / "DEBIAN/shlibs").read_text(encoding="utf-8").split()
            self.assertEqual(listed[:3], [*soname.split(".so."), package])
            self.assertIn("ldconfig", (self.roots[package] / "DEBIAN/postinst").read_text(encoding="utf-8"))

    def test_what_a_package_needs_it_names(self):
        version = {name: f"{name} (= {self.fields(name)['Version']})" for name in NAMES}
        count = 0
        for name, root in self.roots.items():
            needs = self.needs(name)
            for path in filter(is_program, root.rglob("*")):
                dynamic = run(BUILD["readelf"], "-dW", path)
                self.assertNotIn("RUNPATH", dynamic, path)
                self.assertNotIn("RPATH", dynamic, path)
                for library in re.findall(r"NEEDED.*\[(.*)\]", dynamic):
                    count += 1
                    if library.startswith("libtarvane"):
                        package = LIBRARIES[library.split(".so.")[0] + ".so"]
                        self.assertEqual(needs.get(package), version[package])
                    elif not library.startswith("ld-linux"):
                        owners = owners_of(library)
                        self.assertTrue(owners & set(needs), f"{name}: {library} of {owners}")
        self.assertGreater(count, 8)
        # What no header of a file says.
        for name, needed in {
            "tarvane": ("tarvane-data",), "libtarvane1": ("tarvane-data",), "libtarvane-vessel1": ("tarvane-data",),
            "libtarvane-dev": tuple(LIBRARIES.values()), "python3-tarvane": ("libtarvane-vessel1",),
        }.items():  # fmt: skip
            for other in needed:
                self.assertEqual(self.needs(name).get(other), version[other], name)

    @unittest.skipUnless(len(set(BUILD["words"])) == 1, "Python has another machine word")
    def test_python_needs_no_development_package(self):
        system = SCRATCH / "system"
        for name in ("python3-tarvane", "tarvane-data", *LIBRARIES.values()):
            shutil.copytree(self.roots[name] / "usr", system / "usr", symlinks=True, dirs_exist_ok=True)
        self.assertFalse((system / "usr" / BUILD["lib"] / "libtarvane_vessel.so").exists())
        host = Path(BUILD["source"], "examples/hosts/three_elements.py")
        surroundings = {name: value for name, value in os.environ.items() if not name.startswith(("TARVANE", "LD_"))}
        done = subprocess.run([sys.executable, "-B", str(host)], capture_output=True, text=True, check=False, cwd=SCRATCH,
                              env={**surroundings, "PYTHONPATH": str(system / "usr" / BUILD["python"])})  # fmt: skip
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        recorded = Path(BUILD["source"], "tests/clients/three_elements.txt").read_text(encoding="latin-1").splitlines()
        numbers = re.findall(r"^\w+ \w+ [0-9A-F]{8}$", done.stdout, re.M)
        self.assertGreater(len(numbers), 8)
        self.assertLessEqual(set(numbers), set(recorded))

    def test_fields(self):
        for name in NAMES:
            fields = self.fields(name)
            self.assertEqual(fields["Version"].split("-")[0], BUILD["version"])
            self.assertRegex(fields["Description"], "^calculations of pressure vessels")
            self.assertRegex(fields["Maintainer"], r"^[^<]+ <\S+@\S+>$")
            programs = any(map(is_program, self.roots[name].rglob("*")))
            self.assertEqual(fields["Architecture"] == "all", not programs and name != "libtarvane-dev", name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
