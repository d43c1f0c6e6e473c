"""The wheel, made and installed by pip without a network into an empty environment, where its tests pass.

    wheel_test.py SOURCE BUILD VERSION SCRATCH
"""

import base64
import csv
import hashlib
import json
import os
import shutil
import subprocess
import sys
import unittest
import zipfile
from pathlib import Path

SKIPPED = 77
SOURCE, BUILD, VERSION, SCRATCH = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3], Path(sys.argv[4])
VENV = SCRATCH / "an empty environment"
ELSEWHERE = SCRATCH / "elsewhere"
# No library, data files, program or source tree may be found by these, and no index: nobody listens there.
ENVIRONMENT = {
    **{name: value for name, value in os.environ.items()
       if not name.startswith(("PYTHON", "PIP_", "TARVANE_", "LD_", "SOURCE_DATE"))},
    "PIP_CONFIG_FILE": os.devnull, "PIP_INDEX_URL": "http://127.0.0.1:9/simple", "PIP_RETRIES": "0",
    "PIP_DISABLE_PIP_VERSION_CHECK": "1", "PYTHONDONTWRITEBYTECODE": "1", "TARVANE_BUILD": str(BUILD),
}  # fmt: skip
RUN_THERE = "import tarvane; v = tarvane.Vessel(); "

try:
    import ensurepip
    import venv  # noqa: F401

    ensurepip.version()
except (ImportError, OSError, IndexError) as missing:
    print(f"not run: {missing}; python3-venv has it")
    sys.exit(SKIPPED)


def run(*command, fails=False, folder=ELSEWHERE, **surroundings):
    """What a command says."""
    done = subprocess.run([str(word) for word in command], cwd=folder, env={**ENVIRONMENT, **surroundings},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)  # fmt: skip
    if (done.returncode != 0) != fails:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}")
    return done.stdout


def backend(folder, tree=BUILD, fails=False, **surroundings):
    """The wheel that the backend makes without pip."""
    folder.mkdir(exist_ok=True)
    program = f"import tarvane_backend; print(tarvane_backend.build_wheel({str(folder)!r}, {{'build': {str(tree)!r}}}))"
    said = run(VENV / "bin/python", "-c", program, fails=fails, PYTHONPATH=str(SOURCE / "python/backend"), **surroundings)
    return said if fails else folder / said.strip().splitlines()[-1]


def python(program, **surroundings):
    return run(VENV / "bin/python", "-c", program, **surroundings).strip()


def setUpModule():
    global WHEEL
    shutil.rmtree(SCRATCH, ignore_errors=True)
    ELSEWHERE.mkdir(parents=True)
    run("/usr/bin/python3", "-m", "venv", VENV)
    if "tarvane" in run(VENV / "bin/pip", "list"):
        raise AssertionError("the environment is not empty")
    run(VENV / "bin/pip", "wheel", "--wheel-dir", SCRATCH / "by pip", SOURCE)
    (WHEEL,) = (SCRATCH / "by pip").glob("*.whl")
    run(VENV / "bin/pip", "install", WHEEL)


def tearDownModule():
    shutil.rmtree(SCRATCH, ignore_errors=True)


class Wheel(unittest.TestCase):
    def test_it_is_of_its_platform(self):
        platform = subprocess.run([VENV / "bin/python", "-c", "import sysconfig; print(sysconfig.get_platform())"],
                                  capture_output=True, text=True, check=True).stdout.strip()  # fmt: skip
        tag = "py3-none-" + platform.replace("-", "_").replace(".", "_")
        self.assertEqual(WHEEL.name, f"tarvane-{VERSION}-{tag}.whl")
        with zipfile.ZipFile(WHEEL) as wheel:
            said = wheel.read(f"tarvane-{VERSION}.dist-info/WHEEL").decode()
        self.assertIn("Root-Is-Purelib: false\n", said)
        self.assertIn(f"Tag: {tag}\n", said)

    def test_it_has_the_package_the_libraries_and_the_data_files(self):
        package = SOURCE / "python" / "tarvane"
        built = {f"data/{file.name}": file for file in (BUILD / "bin").iterdir()
                 if file.suffix.lower() in (".txt", ".bin")}  # fmt: skip
        files = {**{file.name: file for file in [*package.glob("*.py"), package / "py.typed"]}, **built,
                 **{name: BUILD / "bin" / name for name in ("libtarvane.so", "libtarvane_vessel.so")}}  # fmt: skip
        self.assertIn("data/MATFILE1.BIN", files)
        with zipfile.ZipFile(WHEEL) as wheel:
            inside = {name for name in wheel.namelist() if name.startswith("tarvane/")}
            self.assertEqual(inside, {f"tarvane/{name}" for name in files})
            for name, file in files.items():
                self.assertEqual(wheel.read(f"tarvane/{name}"), file.read_bytes(), name)

    def test_its_record_is_right(self):
        with zipfile.ZipFile(WHEEL) as wheel:
            record = f"tarvane-{VERSION}.dist-info/RECORD"
            rows = {row[0]: row[1:] for row in csv.reader(wheel.read(record).decode().splitlines())}
            self.assertEqual(set(rows), set(wheel.namelist()))
            self.assertEqual(rows.pop(record), ["", ""])
            for name, (digest, size) in rows.items():
                data = wheel.read(name)
                found = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).decode().rstrip("=")
                self.assertEqual((digest, size), (f"sha256={found}", str(len(data))), name)

    def test_two_builds_are_equal(self):
        self.assertEqual(backend(SCRATCH / "second").read_bytes(), WHEEL.read_bytes())
        dated = [backend(SCRATCH / f"dated {i}", SOURCE_DATE_EPOCH="1700000000").read_bytes() for i in (1, 2)]
        self.assertEqual(*dated)
        self.assertNotEqual(dated[0], WHEEL.read_bytes())
        with zipfile.ZipFile(SCRATCH / "dated 1" / WHEEL.name) as wheel:
            self.assertEqual({entry.date_time for entry in wheel.infolist()}, {(2023, 11, 14, 22, 13, 20)})

    def test_a_tree_that_is_not_built_or_of_another_version_is_refused(self):
        empty = SCRATCH / "not built"
        said = backend(SCRATCH / "none", tree=empty, fails=True)
        self.assertIn(f"cmake --build {empty} --target tarvane_vessel", said)
        self.assertIn("libtarvane_vessel.so", said)
        other = SCRATCH / "another version" / "python"
        shutil.copytree(SOURCE / "python/backend", other / "backend")
        (other.parent / "CMakeLists.txt").write_text("project(tarvane VERSION 99.0.0 LANGUAGES C)", encoding="utf-8")
        program = f"import tarvane_backend; tarvane_backend.build_wheel('.', {{'build': {str(BUILD)!r}}})"
        said = run(VENV / "bin/python", "-c", program, fails=True, PYTHONPATH=str(other / "backend"))
        self.assertIn(f"is of version {VERSION}, the sources are of 99.0.0", said)
        said = run(VENV / "bin/pip", "wheel", SOURCE, fails=True, TARVANE_BUILD=str(empty))
        self.assertIn(f"cmake --build {empty}", said)  # pip shows it
        self.assertEqual(list(ELSEWHERE.iterdir()), [])


class Installed(unittest.TestCase):
    def test_library_and_data_are_those_of_the_package(self):
        package = Path(python("import tarvane, os; print(os.path.dirname(tarvane.__file__))"))
        self.assertIn(VENV, package.parents)
        loaded = python(RUN_THERE + "print([l.split()[-1] for l in open('/proc/self/maps') if '/libtarvane' in l][0])")
        self.assertTrue(loaded.endswith("libtarvane_vessel.so"), loaded)
        self.assertEqual(python(RUN_THERE + "print(v._handle.path, v.missing, v.version, sep='|')"),
                         f"{package / 'libtarvane_vessel.so'}|[]|{VERSION}")  # fmt: skip
        request = {"shell": [{"kind": "cylinder", "P": 100, "T": 300, "D": 48, "t": 0.5, "material": "SA-516 70"}]}
        ask = f"import json; r = tarvane.run(json.loads({json.dumps(request)!r})); print(r.passed, r.data[0]['version'])"
        self.assertEqual(python(RUN_THERE + ask), f"True {VERSION}")
        # Without its own, no other data files take their place.
        data = package / "data"
        data.rename(package / "away")
        data.mkdir()
        try:
            self.assertIn(str(data), python(RUN_THERE + "print(v.missing)"))
            self.assertEqual(python(RUN_THERE + "print(v.missing)", TARVANE_DATA=str(package / "away")), "[]")
        finally:
            data.rmdir()
            (package / "away").rename(data)

    def test_the_tests_of_the_package_pass(self):
        there = ["-m", "unittest", "discover", "-s", SOURCE / "python" / "tests"]
        said = run(VENV / "bin/python", *there)
        print("\n".join(line for line in said.splitlines() if "not run" in line or line.startswith(("Ran", "OK"))))
        self.assertRegex(said, r"(?m)^Ran [1-9]\d+ tests")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
