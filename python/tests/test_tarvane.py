"""The package against the library that TARVANE_LIBRARY names, or against that of an installed wheel."""

import ast
import copy
import ctypes
import ctypes.util
import json
import os
import pickle
import pydoc
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest
import warnings
from pathlib import Path

import tarvane
from tarvane import _library

VESSEL = tarvane.Vessel()
LIBRARY = Path(VESSEL._handle.path)
PACKAGE = Path(tarvane.__file__).parent
OWN = LIBRARY.parent == PACKAGE  # an installed wheel
SOURCE = Path(__file__).parents[2]

RING = {
    "type": "loose ring", "P": 100.0, "T": 200.0, "Sfo": 20000.0, "Sfa": 20000.0, "Sb": 25000.0,
    "Sa": 25000.0, "t": 2.0, "B": 24.0, "A": 32.0, "Fod": 27.0, "Fid": 24.0, "Go": 27.0, "Gi": 25.0,
    "C": 29.5, "a": 1.0, "n": 20, "m": 1.0, "y": 200.0, "tg": 0.0625, "bolting": "TEMA", "facing": "1a",
}  # fmt: skip
CYLINDER = {"kind": "cylinder", "P": 356.0, "T": 300.0, "S": 20000.0, "Sa": 20000.0, "D": 90.0, "t": 1.125,
            "ci": 0.125}  # fmt: skip
VACUUM = {"kind": "sphere", "P_external": 15.0, "T": 200.0, "D": 60.0, "t": 0.5, "S": 20000.0,
          "Sy": 38000.0, "method": "stress", "chart": "CS-2"}  # fmt: skip
# The same with the old names.
OLD_RING = {**{key: RING[key] for key in RING if key not in ("n", "bolting", "facing")}, "bolts": 20}
OLD_CYLINDER = {"element": "cylinder", "P": 356.0, "S": 20000.0, "Sa": 20000.0, "D": 90.0, "t": 1.125, "c": 0.125}
OLD_VACUUM = {"element": "sphere", "P": 15.0, "T": 200.0, "D": 60.0, "t": 0.5, "S": 20000.0,
              "Fy": 38000.0, "case_2286": 1, "chart": "CS-2"}  # fmt: skip


def faults_of(request, calculate=tarvane.run):
    try:
        calculate(request)
    except tarvane.InputError as error:
        return error.faults
    return ()


def python(program, cwd="/", **environment):
    """A Python process of its own."""
    kept = {name: value for name, value in os.environ.items() if name != "TARVANE_LIBRARY"}
    return subprocess.run(
        [sys.executable, "-c", "import tarvane\n" + program], cwd=cwd, env={**kept, **environment},
        capture_output=True, text=True, check=False,
    )  # fmt: skip


class Scalar:
    """Like the scalars of numpy."""

    shape = ()

    def __init__(self, value):
        self.value = value

    def __float__(self):
        raise AssertionError("loses the imaginary part")

    def item(self):
        return self.value


class Requests(unittest.TestCase):
    def test_all_faults_are_there_with_path_value_and_reason(self):
        faults = faults_of({"flange": [{**RING, "P": "ten", "bolt": 20}]})
        self.assertEqual([fault.path for fault in faults], ["flange[0].bolt", "flange[0].P"])
        self.assertEqual(faults[1].value, 'the text "ten"')
        self.assertIn("psig", faults[1].reason)

    def test_what_is_no_json_is_a_fault_with_its_path(self):
        for value in (float("nan"), float("inf"), b"1.5", object(), 1j, {1: 2}):
            faults = faults_of({"shell": [CYLINDER, {**CYLINDER, "t": value}]})
            self.assertEqual([fault.path for fault in faults], ["shell[1].t"], value)
        for value in (None, 3, [1, 2]):
            self.assertIn("a dictionary or the path", faults_of(value)[0].reason)

    def test_numbers_of_numpy_are_taken(self):
        expected = tarvane.run({"shell": [CYLINDER]}).to_dict()
        given = {key: value if isinstance(value, str) else Scalar(value) for key, value in CYLINDER.items()}
        self.assertEqual(tarvane.run({"shell": (given,)}).to_dict(), expected)
        self.assertEqual(len(faults_of({"shell": [{**CYLINDER, "t": Scalar(1j)}]})), 1)

    def test_files_give_what_dictionaries_give(self):
        request = {"units": "SI", "shell": [{"kind": "sphere", "P": 1.5, "T": 150, "S": 138.0, "Sa": 138.0, "D": 1500.0,
                                             "t": 12.5}]}  # fmt: skip
        expected = tarvane.run(request).to_dict()
        toml = 'units = "SI"\n[[shell]]\nkind = "sphere"\nP = 1.5\nT = 150\nS = 138.0\nSa = 138.0\nD = 1500.0\nt = 12.5\n'
        with tempfile.TemporaryDirectory() as folder:
            files = [("r.json", json.dumps(request))] + ([("r.toml", toml)] if sys.version_info >= (3, 11) else [])
            for name, text in files:
                path = Path(folder, name)
                path.write_text(text, encoding="utf-8")
                self.assertEqual(tarvane.run(path).to_dict(), expected, name)
                self.assertEqual(tarvane.run(str(path)).units, "SI")
                path.write_text("[[", encoding="utf-8")
                self.assertTrue(faults_of(path), name)
                path.write_bytes(b"\0")
                self.assertTrue(faults_of(path), name)
            with self.assertRaises(FileNotFoundError):
                tarvane.run(Path(folder, "none.toml"))

    def test_materials_standards_units_and_temperatures_are_there(self):
        result = tarvane.run({
            "units": "SI", "T": 150, "mdmt": [{"curve": "B", "tg": 25.0}],
            "shell": [{"kind": "cylinder", "P": 1.5, "material": "SA-516 70", "D": 1500.0, "t": 12.5}],
        })  # fmt: skip
        self.assertTrue(result.passed)
        self.assertGreater(result.shell[0].inputs["S"].value, 100.0)  # of the material
        self.assertIsNone(result.shell[0].inputs["S"].given)
        self.assertTrue(any("Shell Input Data" in line.text for line in result.shell[0].report))
        self.assertLess(result.mdmt[0].results.T_lowest, 10.0)  # degrees Celsius

    def test_a_flange_that_cannot_be_calculated_stops(self):
        with self.assertRaises(tarvane.EngineStopped):
            tarvane.run({"flange": [{**RING, "Fid": 7.0, "ci": 4.1}]})
        self.assertIsNotNone(tarvane.run({"flange": [RING]}).flange[0].results.mawp)


class Results(unittest.TestCase):
    def setUp(self):
        self.result = tarvane.run({"flange": [RING], "shell": [CYLINDER], "external": [VACUUM]})

    def test_a_published_cylinder(self):
        # ASME PTB-4, E4.3.1: 0.8119 in. without the corrosion allowance
        self.assertAlmostEqual(self.result.shell[0].results.t_governing, 0.8119, places=4)

    def test_bolt_loads_are_those_of_appendix_2(self):
        found = self.result.flange[0].results
        b = 0.5 * ((27.0 - 25.0) / 4) ** 0.5
        g = 27.0 - 2 * b
        h = 3.14159265 / 4 * g * g * 100.0
        self.assertAlmostEqual(found.G, g, places=4)
        self.assertAlmostEqual(found.Wm1 / (h + 2 * b * 3.14159265 * g * 1.0 * 100.0), 1.0, places=5)

    def test_a_result_without_a_value_is_an_error_with_its_reason(self):
        flange = self.result.flange[0]
        found = flange.results
        for read in (lambda: found.t_req, lambda: found["t_req"], lambda: found.designed.C, lambda: flange.t_req,
                     lambda: flange.designed.C):  # fmt: skip
            with self.assertRaisesRegex(tarvane.NoValue, "kind"):
                read()
        self.assertEqual(self.result.flange[0].why["t_req"], "kind analyse")
        self.assertEqual(found.designed.why["C"], found.why["designed.C"])
        self.assertIsNone(found.get("t_req"))
        self.assertNotIn("mawp", found.why)
        for read in (lambda: found.mapw, lambda: flange.mapw, lambda: found["mapw"], lambda: found.get("mapw")):
            with self.assertRaisesRegex((AttributeError, KeyError), "mapw is no result; the nearest is 'mawp'"):
                read()

    def test_a_vessel_has_a_summary_and_names_its_data(self):
        parts = [{**CYLINDER, "description": "Shell"},
                 {**CYLINDER, "description": "Head", "kind": "sphere", "t": 0.5}]  # fmt: skip
        result = tarvane.run({"tarvane": 1, "vessel": {"description": "Drum", "E": 1.0}, "shell": parts})
        self.assertEqual(list(result.summary), ["mawp", "map_nc", "maep", "mdmt", "hydrotest_b", "hydrotest_c"])
        mawp = result.summary["mawp"]
        self.assertEqual(mawp.component, "shell[1]")
        self.assertEqual(mawp.value, result.shell[1].results.mawp)
        self.assertIsNone(result.summary["maep"].value)
        self.assertIsNone(result.summary["maep"].component)
        self.assertEqual(len(result.summary["maep"].lacks), 2)
        self.assertEqual(self.result.summary, {})  # a list of components
        self.assertEqual(result.data_files, [])
        named = tarvane.run({"shell": [{**{k: v for k, v in CYLINDER.items() if k not in ("S", "Sa")},
                                        "material": "SA-516 70"}]})  # fmt: skip
        self.assertEqual(named.data_edition, named.to_dict().get("data_edition"))
        used = {item.item: item for file in named.data_files for item in file.used}
        self.assertIn(used["SA-516 70, 1"].status, ("published", "checked", "approximate"))
        self.assertEqual([each["file"] for each in named.data], [file.file for file in named.data_files])
        self.assertTrue(named.says.startswith("every check that tarvane makes passes; "), named.says)

    def test_verdicts_and_checks(self):
        flange = self.result.flange[0]
        self.assertFalse(self.result.passed or flange.passed)
        self.assertEqual(flange.governing.state, "fail")
        self.assertEqual(self.result.governing.component, "flange[0]")
        self.assertGreater(flange.governing.ratio, 1.0)
        self.assertTrue(self.result.shell[0].passed)
        self.assertEqual(flange.inputs["P"], tarvane.Input(100, "file", 100))

    def test_reports_and_drawings_come_when_asked_for(self):
        flange = self.result.flange[0]
        self.assertTrue(any("Flange Input Data Values" in str(line) for line in flange.report))
        self.assertEqual(len(flange.report[-1].marks), 6)
        self.assertEqual(len(self.result.report), sum(len(c.report) for c in self.result.components))
        request = {"external": [{**VACUUM, "method": "chart"}]}
        silent = tarvane.run(request, report=False)
        self.assertEqual(silent.report, [])
        self.assertEqual(list(silent.external[0].drawings), ["section", "chart"])
        for svg in silent.external[0].drawings.values():
            self.assertIn("<svg", svg)
        self.assertEqual(tarvane.run(request, drawings=False).external[0].drawings, {})
        self.assertEqual(flange.drawings.keys(), {"section"})

    def test_a_result_can_be_copied_and_stored(self):
        for other in (copy.deepcopy(self.result), pickle.loads(pickle.dumps(self.result))):
            self.assertEqual(other.flange[0].results.mawp, self.result.flange[0].results.mawp)

    def test_threads_wait_for_one_another(self):
        expected, wrong = self.result.to_dict(), []

        def work():
            for vessel in (VESSEL, tarvane.Vessel()):
                request = {"flange": [RING], "shell": [CYLINDER], "external": [VACUUM]}
                if vessel.calculate(request).to_dict() != expected:
                    wrong.append(vessel)

        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(wrong, [])


class Library(unittest.TestCase):
    def test_a_missing_library_tells_how_to_name_it(self):
        for call in ("tarvane.Vessel('/no/such/libtarvane_vessel.so')", *([] if OWN else ["tarvane.Vessel()"])):
            with tempfile.TemporaryDirectory() as folder:
                found = python(call, folder, LD_LIBRARY_PATH="", TARVANE_LIBRARY="")
            self.assertIn("OSError", found.stderr)
            self.assertIn("TARVANE_LIBRARY", found.stderr)

    def test_another_library_is_not_taken(self):
        found = python(f"tarvane.Vessel({ctypes.util.find_library('c')!r})")
        self.assertIn("is not the vessel library", found.stderr)

    def test_the_engine_s_library_stands_for_that_beside_it(self):
        engine = str(LIBRARY.with_name(_library.ENGINE))
        found = python(f"print(tarvane.Vessel({engine!r}).version, tarvane.Vessel().version)", TARVANE_LIBRARY=engine)
        self.assertEqual(found.stdout.split(), [VESSEL.version] * 2, found.stderr)

    def test_data_folders(self):
        for folder in ("/no/such/folder", LIBRARY):
            with self.assertRaises(NotADirectoryError):
                tarvane.Vessel(data_folder=folder)
        with tempfile.TemporaryDirectory() as folder:
            empty = tarvane.Vessel(data_folder=folder)
            self.assertTrue(empty.missing)
            with self.assertRaises((OSError, tarvane.InputError)):
                empty.calculate({"external": [VACUUM]})
        self.assertEqual(VESSEL.missing, [])

    def test_a_package_with_a_library_takes_that_and_its_data(self):
        with tempfile.TemporaryDirectory() as folder:
            package = Path(folder, "tarvane")
            shutil.copytree(PACKAGE, package, ignore=shutil.ignore_patterns("__pycache__", "data", "*.so", "*.dll"))
            shutil.copy(LIBRARY, package)
            (package / "data").mkdir()
            told = "v = tarvane.Vessel(); print(v._handle.path); print(v.missing)"
            found = python(told, folder, PYTHONPATH=folder, TARVANE_DATA="", TARVANE_LIBRARY="")
            library, missing = found.stdout.splitlines() or [found.stderr, ""]
            self.assertEqual(library, str(package / LIBRARY.name))
            self.assertIn(str(package / "data"), missing)  # is empty, and no other folder takes its place
            full = PACKAGE / "data" if OWN else LIBRARY.parent
            found = python(told, folder, PYTHONPATH=folder, TARVANE_DATA=str(full), TARVANE_LIBRARY="")
            self.assertEqual(found.stdout.splitlines()[1:], ["[]"], found.stderr)
            (package / "data").rmdir()
            (package / "data").symlink_to(full)
            found = python(told, folder, PYTHONPATH=folder, TARVANE_DATA="", TARVANE_LIBRARY="")
            self.assertEqual(found.stdout.splitlines()[1:], ["[]"], found.stderr)

    def test_a_path_that_is_none_is_named(self):
        for value in ("", 3):
            with self.assertRaises((TypeError, ValueError)) as caught:
                tarvane.Vessel(value)
            self.assertIn(f"library: {value!r}", str(caught.exception))

    def test_a_closed_vessel_says_so(self):
        with tarvane.Vessel() as vessel:
            self.assertEqual(vessel.schema("input")["title"], "Request of tarvane")
        with self.assertRaisesRegex(ValueError, "closed"):
            vessel.calculate({"shell": [CYLINDER]})
        with self.assertRaises(tarvane.InputError):
            VESSEL.schema("other")

    def test_help_tells_the_unit_of_every_key(self):
        for function in (tarvane.run, tarvane.Vessel.calculate):
            text = pydoc.plain(pydoc.render_doc(function))
            for kind, keys in VESSEL.keys().items():
                self.assertIn(f"Keys of {kind}:", text)
                for name, key in keys.items():
                    unit = f"({key['units']['US']}; " if key.get("units") else ""
                    self.assertRegex(text, rf"(?m)^ +{re.escape(name)} +{re.escape(unit)}")

    def test_help_does_without_a_library(self):
        found = python("import pydoc; print(pydoc.plain(pydoc.render_doc(tarvane.run)))", TARVANE_LIBRARY="/none.so")
        self.assertIn("Calculates a request", found.stdout)
        self.assertIn("/none.so", found.stdout)

    def test_the_package_needs_the_standard_library_alone(self):
        found = subprocess.run(
            [sys.executable, "-I", "-S", "-c",
             f"import sys; sys.path.append({str(PACKAGE.parent)!r}); import tarvane; "
             f"print(tarvane.Vessel({str(LIBRARY)!r}).version, 'numpy' in sys.modules)"],
            capture_output=True, text=True, check=False,
        )  # fmt: skip
        self.assertEqual(found.stdout.split(), [VESSEL.version, "False"], found.stderr)

    def test_the_numbers_of_the_header(self):
        header = (SOURCE / "include" / "tarvane" / "vessel.h").read_text()
        numbers = {name: int(n) for name, n in re.findall(r"TARVANE_(\w+)\s*=\s*(\d+)", header)}
        for name in ("OK", "FAULTY", "ENGINE_STOPPED", "NO_DATA", "WANT_RESULTS", "WANT_REPORT", "WANT_DRAWINGS"):
            self.assertEqual(numbers[name], getattr(_library, name), name)
        self.assertEqual(numbers["VESSEL_ABI"], _library._ABI)

    def test_the_example_prints_the_recorded_bits(self):
        host = SOURCE / "examples" / "hosts" / "three_elements.py"
        recorded = (SOURCE / "tests" / "clients" / "three_elements.txt").read_text("latin-1").splitlines()
        out = subprocess.run([sys.executable, host], capture_output=True, text=True, check=True).stdout
        bits = re.findall(r"(?m)^\w+ \w+ [0-9A-F]{8}$", out)
        self.assertEqual(len(bits), 10)
        self.assertEqual([line for line in bits if line not in recorded], [])

    def test_the_example_of_a_sweep(self):
        host, file = SOURCE / "examples" / "hosts" / "sweep.py", SOURCE / "examples" / "weld_neck_nps12.toml"
        out = subprocess.run([sys.executable, host, file], capture_output=True, text=True, check=True).stdout
        rows = [line.split() for line in out.splitlines()]
        self.assertEqual(len(rows), 11)
        mawps = [float(row[1]) for row in rows]
        self.assertEqual(mawps, sorted(mawps))
        self.assertEqual([row[2] for row in rows], ["fail"] * 4 + ["pass"] * 7)

    def test_every_function_is_annotated(self):
        self.assertTrue((PACKAGE / "py.typed").exists())
        functions = [node for path in PACKAGE.glob("*.py") for node in ast.walk(ast.parse(path.read_text()))
                     if isinstance(node, ast.FunctionDef)]  # fmt: skip
        self.assertGreater(len(functions), 30)
        for function in functions:
            self.assertIsNotNone(function.returns, function.name)
            given = function.args.args + function.args.kwonlyargs
            bare = [a.arg for a in given if a.annotation is None and a.arg != "self"]
            self.assertEqual(bare, [], function.name)


class Before(unittest.TestCase):
    """The old functions."""

    def setUp(self):
        catcher = warnings.catch_warnings(record=True)
        self.warned = catcher.__enter__()
        self.addCleanup(catcher.__exit__, None, None, None)
        warnings.simplefilter("always")
        self.engine = tarvane.Engine()

    def test_they_warn_with_the_new_way(self):
        self.engine.flange(OLD_RING)
        told = [str(warning.message) for warning in self.warned]
        self.assertTrue(all(w.category is DeprecationWarning and w.filename == __file__ for w in self.warned))
        self.assertIn("Vessel", told[0])
        self.assertIn('calculate({"flange"', told[1])

    def test_their_results_are_the_singles_of_the_new_ones(self):
        new = tarvane.run({"flange": [{**RING, "density": 0.2836}], "shell": [{**CYLINDER, "T": 0.0}],
                           "external": [VACUUM]})  # fmt: skip
        old = self.engine.flange(OLD_RING)
        self.assertEqual(old.mawp, ctypes.c_float(new.flange[0].results.mawp).value)
        self.assertAlmostEqual(old.Mop / 12, new.flange[0].results.Mop, places=2)
        self.assertIsNone(old.t_req)
        self.assertEqual([line.text for line in old.report], [line.text for line in new.flange[0].report])
        self.assertEqual(self.engine.shell(OLD_CYLINDER).t_req, ctypes.c_float(new.shell[0].results.t_governing).value)
        vacuum = self.engine.external(OLD_VACUUM)
        self.assertEqual((vacuum.maep, vacuum.Do), (ctypes.c_float(new.external[0].results.maep).value, 61.0))

    def test_a_flange_s_n_is_refused_with_splits(self):
        for data in ({**OLD_RING, "n": 2}, RING):
            faults = faults_of(data, self.engine.flange)
            self.assertEqual(len(faults), 1)
            self.assertIn("splits", faults[0].reason)
        halves = [self.engine.flange({**OLD_RING, "splits": splits}).mawp for splits in ("one", 1)]
        self.assertEqual(*halves)
        self.assertNotEqual(halves[0], self.engine.flange(OLD_RING).mawp)

    def test_what_has_no_counterpart_says_so(self):
        with self.assertRaisesRegex(AttributeError, "C surface"):
            self.engine.flange(OLD_RING).record
        with self.assertRaisesRegex(AttributeError, "lesser"):
            self.engine.shell(OLD_CYLINDER).fail_ca_knuckle

    def test_a_material_is_a_label(self):
        named = {**OLD_RING, "material": "SA-105", "bolt_material": "none such", "description": "x"}
        self.assertEqual(self.engine.flange(named).mawp, self.engine.flange(OLD_RING).mawp)

    def test_required_thicknesses(self):
        thickness = {**OLD_RING, "kind": "thickness"}
        self.assertIsNone(self.engine.flange({**thickness, "A": 20.0}).t_req)  # refused
        self.assertGreater(self.engine.flange(thickness).t_req, 0.5)
        self.assertGreater(self.engine.flange({**thickness, "P": -15.0}).t_req, 0.5)
        self.assertLess(self.engine.flange({**thickness, "bolts": 4, "P": 400.0}).t_req, 0.0)
        cover = {**{key: OLD_RING[key] for key in OLD_RING if key != "B"}, "type": "blind"}
        self.assertGreater(self.engine.flange(cover).t_req, 0.5)
        self.assertIsNone(self.engine.flange({**cover, "P": -15.0}).t_req)

    def test_moduli(self):
        self.assertGreater(self.engine.modulus(200.0, 1), 20.0)
        self.assertEqual(self.engine.modulus(Scalar(200.0), Scalar(1)), self.engine.modulus(200.0, 1))
        self.assertGreater(self.engine.modulus(200.0, code="PD 5500", chart="HA-3"), 20.0)
        for reference in (99, 0.5, "1"):
            with self.assertRaisesRegex(tarvane.InputError, "reference"):
                self.engine.modulus(200.0, reference)

    def test_the_tables_of_keys(self):
        self.assertEqual(tarvane.FLANGE_KEYS["bolts"].meaning, VESSEL.keys()["flange"]["n"]["meaning"])
        self.assertEqual(tarvane.SHELL_KEYS["element"].choices["cone"], 5)
        self.assertIn("channel_cover", tarvane.FLANGE_FLAGS)
        self.assertIn("chart", tarvane.EXTERNAL_TEXTS)
        with self.assertRaises(AttributeError):
            tarvane.OTHER_KEYS


if __name__ == "__main__":
    unittest.main()
