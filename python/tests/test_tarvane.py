"""The package against the library that TARVANE_LIBRARY names."""

import ast
import ctypes
import ctypes.util
import dataclasses
import os
import pydoc
import re
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

import tarvane
from tarvane import _flange, _library

ENGINE = tarvane.Engine()
PACKAGE = Path(tarvane.__file__).parent
HEADER = Path(__file__).parents[2] / "include" / "tarvane" / "tarvane.h"

RING = {
    "type": "loose ring", "P": 100.0, "T": 200.0, "Sfo": 20000.0, "Sfa": 20000.0, "Sb": 25000.0,
    "Sa": 25000.0, "t": 2.0, "B": 24.0, "A": 32.0, "Fod": 27.0, "Fid": 24.0, "Go": 27.0, "Gi": 25.0,
    "C": 29.5, "a": 1.0, "bolts": 20, "m": 1.0, "y": 200.0, "tg": 0.0625,
}  # fmt: skip
CYLINDER = {"element": "cylinder", "P": 356.0, "S": 20000.0, "Sa": 20000.0, "D": 90.0, "t": 1.125,
            "c": 0.125}  # fmt: skip
VACUUM = {"element": "sphere", "P": 15.0, "T": 200.0, "D": 60.0, "t": 0.5, "S": 20000.0,
          "Fy": 38000.0, "case_2286": 1, "chart": "CS-2"}  # fmt: skip


class Input(unittest.TestCase):
    def refused(self, calculate, data, words, *more):
        with self.assertRaises(tarvane.InputError) as caught:
            calculate(data, *more)
        for word in words:
            self.assertIn(word, str(caught.exception))

    def test_an_unknown_key_is_named_with_its_neighbour(self):
        self.refused(ENGINE.flange, {**RING, "bolt": 20}, ["'bolt'", "'bolts'"])
        self.refused(ENGINE.shell, {**CYLINDER, "alhpa": 20}, ["'alhpa'", "'alpha'"])

    def test_a_name_of_the_input_files_is_named_with_the_key_of_here(self):
        for name, key in (("g0", "go"), ("bolting", "threads"), ("facing", "sketch"), ("splits", "n")):
            self.refused(ENGINE.flange, {**RING, name: 1}, [repr(name), f"did you mean {key!r}?"])
        # the number of bolts there, the splits here: no key of a weld neck, and 20 are no splits
        neck = {**RING, "type": "weld neck", "go": 1.0, "g1": 1.5, "h": 2.0, "n": 20}
        self.refused(ENGINE.flange, neck, ["n: 20", "'weld neck'", "did you mean 'bolts'?"])
        self.refused(ENGINE.flange, {**RING, "n": 20}, ["n: 20", "'none'", "did you mean 'bolts'?"])
        self.assertNotIn("did you mean", str(self.error({**RING, "LjID": 25.0})))

    def error(self, data):
        with self.assertRaises(tarvane.InputError) as caught:
            ENGINE.flange(data)
        return caught.exception

    def test_the_column_is_needed_where_the_columns_differ(self):
        for sketch in ("2", "3", "4", "5", 5):
            data = {**RING, "sketch": sketch, "w": 0.125}
            self.refused(ENGINE.flange, data, ["column is missing", f"sketch {sketch!r}", "'II'"])
            results = [ENGINE.flange({**data, "column": column}).Wm1 for column in ("I", "II")]
            self.assertNotEqual(*results, sketch)
        for sketch in ("1a", "1b", "1c", "1d", "6"):
            data = {**RING, "sketch": sketch, "w": 0.125}
            results = [ENGINE.flange({**data, **column}).Wm1 for column in ({}, {"column": "II"})]
            self.assertEqual(*results, sketch)
        part = {**RING, "lp": 10.0, "tp": 0.5, "mPart": 1.0, "yPart": 200.0, "sketch_part": "3"}
        self.refused(ENGINE.flange, part, ["column_part is missing", "sketch_part '3'"])
        self.assertIsNotNone(ENGINE.flange({**part, "partition_gasket": False}).mawp)

    def test_a_partition_gasket_without_a_sketch_is_that_of_sketch_1a(self):
        part = {**RING, "lp": 10.0, "tp": 0.5, "mPart": 1.0, "yPart": 200.0}
        self.assertEqual(ENGINE.flange(part), ENGINE.flange({**part, "sketch_part": "1a"}))
        self.assertGreater(ENGINE.flange(part).Wm1, ENGINE.flange(RING).Wm1)

    def test_a_bolt_size_that_the_series_does_not_have_is_named(self):
        self.refused(ENGINE.flange, {**RING, "a": 1.05}, ["a: 1.05", "'TEMA'", "1 and 1.125", "takes 1 in"])
        self.refused(ENGINE.flange, {**RING, "a": 0.25}, ["a: 0.25", "nearest are 0.5 in"])
        metric = {**RING, "threads": "TEMA metric", "bolt_size": "nearest"}
        self.refused(ENGINE.flange, {**metric, "a": 33 / 25.4, "bolt_size": "listed"}, ["1.1811", "1.41732"])
        areas = [ENGINE.flange({**metric, "a": size / 25.4}).Ab for size in (33, 30)]
        self.assertEqual(*areas)
        self.assertEqual(ENGINE.flange({**RING, "a": 1.01}).Ab, ENGINE.flange(RING).Ab)
        self.refused(ENGINE.flange, {**RING, "a": 1.0101}, ["a: 1.0101"])
        self.refused(ENGINE.flange, {**RING, "threads": "user"}, ["threads", "'user'"])
        special = {**RING, "a": 1.05, "threads": "special", "root_area": 0.5}
        self.assertIsNotNone(ENGINE.flange(special).mawp)
        self.assertIsNotNone(ENGINE.flange({**RING, "kind": "design", "a": 1.05}).t_req)

    def test_a_missing_key_is_named_with_its_unit(self):
        self.refused(ENGINE.flange, {key: RING[key] for key in RING if key != "P"}, ["P", "psi"])
        self.refused(ENGINE.external, {**VACUUM, "chart": " "}, ["chart"])

    def test_a_value_that_is_no_number_is_named(self):
        for value in ("1.5", None, [1.0], float("nan"), float("inf")):
            self.refused(ENGINE.shell, {**CYLINDER, "t": value}, ["t", repr(value)])

    def test_a_name_outside_its_choices_is_named_with_them(self):
        self.refused(ENGINE.shell, {**CYLINDER, "element": "tube"}, ["'tube'", "'cylinder'"])
        self.refused(ENGINE.external, {**VACUUM, "element": "flat"}, ["'flat'", "'sphere'"])

    def test_what_is_no_single_precision_number_is_named(self):
        for value in (b"1.5", True, 1e39, 10**400):
            self.refused(ENGINE.shell, {**CYLINDER, "t": value}, ["t", repr(value)])

    def test_numbers_of_other_types_are_taken(self):
        class Scalar:  # as the scalars of numpy
            shape = ()

            def __init__(self, value):
                self.value = value

            def __float__(self):
                raise AssertionError("loses the imaginary part")

            def item(self):
                return self.value

        expected = ENGINE.shell({**CYLINDER, "material": 1})
        data = {key: value if isinstance(value, str) else Scalar(value) for key, value in CYLINDER.items()}
        self.assertEqual(ENGINE.shell({**data, "material": Scalar(1)}), expected)
        self.assertEqual(ENGINE.modulus(Scalar(200.0), Scalar(1)), ENGINE.modulus(200.0, 1))

    def test_a_number_outside_the_choices_is_named_with_them(self):
        self.refused(ENGINE.flange, {**RING, "type": 10}, ["type", "10", "'loose ring' (5)"])
        self.refused(ENGINE.shell, {**CYLINDER, "element": 1.5}, ["1.5", "'cylinder' (1)"])
        self.refused(ENGINE.external, {**VACUUM, "element": 6}, ["element", "'sphere' (4)"])
        for code in ("EN 13445", 3):  # not calculated by the engine
            self.refused(ENGINE.external, {**VACUUM, "code": code}, [repr(code), "'VIII-2'"])

    def test_a_switch_and_a_table_take_whole_numbers(self):
        self.refused(ENGINE.shell, {**CYLINDER, "material": 1.5}, ["material", "1.5"])
        self.refused(ENGINE.external, {**VACUUM, "service": 1e20}, ["service", "1e+20"])
        self.refused(ENGINE.modulus, 200.0, ["reference"], 0.5)
        self.assertEqual(ENGINE.shell({**CYLINDER, "outside": False}), ENGINE.shell(CYLINDER))

    def test_a_flag_is_true_or_false(self):
        for value in ("N", 2, None):
            self.refused(ENGINE.flange, {**RING, "use_corrosion": value}, ["use_corrosion", repr(value)])
        corroded = ENGINE.flange({**RING, "ci": 0.125})
        self.assertEqual(ENGINE.flange({**RING, "ci": 0.125, "use_corrosion": 1}), corroded)
        uncorroded = ENGINE.flange({**RING, "ci": 0.125, "use_corrosion": False})
        self.assertNotEqual(uncorroded.report, corroded.report)

    def test_what_is_no_dictionary_is_refused(self):
        for data in (None, [1, 2], "abc"):
            for calculate in (ENGINE.flange, ENGINE.shell, ENGINE.external):
                self.refused(calculate, data, ["dictionary", repr(data)])
        self.refused(ENGINE.shell, {**CYLINDER, 1: 2.5}, ["1 is no key", "2.5"])

    def test_a_key_without_effect_is_refused(self):
        self.refused(ENGINE.shell, {**CYLINDER, "alpha": 20.0}, ["alpha", "20.0", "'cylinder'", "cone"])
        self.refused(ENGINE.external, {**VACUUM, "length": 60.0}, ["length", "60.0", "'sphere'"])
        self.refused(ENGINE.flange, {**RING, "LjID": 25.0}, ["LjID", "25.0", "'loose ring'", "lap joint"])
        self.refused(ENGINE.flange, {**RING, "root_area": 0.5}, ["root_area", "0.5", "'TEMA'"])
        self.refused(ENGINE.flange, {**RING, "channel_cover": True}, ["channel_cover", "'loose ring'"])
        for calculate, data in ((ENGINE.flange, RING), (ENGINE.external, VACUUM)):
            self.refused(calculate, {**data, "older_division_2": True}, ["older_division_2", "'VIII-1'"])

    def test_what_an_element_needs_is_named(self):
        cone, head = {**CYLINDER, "element": "cone"}, {**CYLINDER, "element": "torispherical", "L": 90.0}
        self.refused(ENGINE.shell, cone, ["alpha", "'cone'", "degrees"])
        self.refused(ENGINE.shell, head, ["r is missing", "'torispherical'"])
        self.refused(ENGINE.shell, {**head, "r": 0.0}, ["r: 0.0"])
        self.refused(ENGINE.external, {**VACUUM, "element": "cylinder"}, ["length", "in"])
        for name in ("t", "A", "bolts"):  # the engine would take 2 inches for the thickness
            without = {key: RING[key] for key in RING if key != name}
            self.refused(ENGINE.flange, without, [f"{name} is missing"])
        self.refused(ENGINE.flange, {**RING, "type": "weld neck"}, ["go is missing", "'weld neck'"])
        self.refused(ENGINE.flange, {**RING, "threads": "special"}, ["root_area is missing"])

    def test_buckling_stress_needs_the_yield_stress(self):
        # without one the engine goes by the charts
        without = {key: VACUUM[key] for key in VACUUM if key != "Fy"}
        self.refused(ENGINE.external, without, ["Fy is missing", "psi"])
        self.refused(ENGINE.external, {**VACUUM, "Fy": 0.0}, ["Fy: 0.0"])
        self.refused(ENGINE.external, {**without, "case_2286": 0, "code": "VIII-2"}, ["Fy", "'VIII-2'"])
        by_charts = ENGINE.external({**without, "case_2286": False})
        older = ENGINE.external({**VACUUM, "case_2286": False, "code": "VIII-2", "older_division_2": True})
        self.assertEqual((by_charts.maep, by_charts.Fha), (older.maep, 0.0))
        self.assertNotEqual(by_charts.maep, ENGINE.external(VACUUM).maep)

    def test_table_g_is_another_factor_a(self):
        data = {**VACUUM, "element": "cylinder", "length": 600.0, "case_2286": False}
        self.assertNotEqual(ENGINE.external(data).A, ENGINE.external({**data, "table_g": True}).A)

    def test_a_value_outside_its_limits_is_named(self):
        for name, value in (("t", 0), ("t", -1.0), ("D", 0.0), ("E", 1.5), ("E", 0.0), ("c", -0.1)):
            self.refused(ENGINE.shell, {**CYLINDER, name: value}, [f"{name}: {value!r}"])
        self.refused(ENGINE.shell, {**CYLINDER, "c": 1.125}, ["t: of 1.125"])
        self.refused(ENGINE.external, {**VACUUM, "P": -15.0}, ["P: -15.0", "psi"])

    def test_a_switch_is_true_or_false(self):
        for value in (2, -1, "yes"):
            self.refused(ENGINE.shell, {**CYLINDER, "outside": value}, [f"outside: {value!r}"])
        self.refused(ENGINE.flange, {**RING, "standard": 5}, ["standard: 5"])
        self.refused(ENGINE.shell, {**CYLINDER, "element": True}, ["element: True"])

    def test_a_part_of_a_bolt_is_refused(self):
        self.refused(ENGINE.flange, {**RING, "bolts": 20.5}, ["bolts: 20.5"])
        self.refused(ENGINE.flange, {**RING, "column": 3}, ["column: 3", "'II'"])

    def test_the_number_that_stands_for_no_value_is_refused(self):
        # the engine would take 0.0 for it
        self.refused(ENGINE.flange, {**RING, "P": -1.0101}, ["P: -1.0101"])

    def test_a_modulus_table_that_the_data_files_do_not_have_is_named(self):
        # the engine would take carbon steel
        self.refused(ENGINE.modulus, 200.0, ["reference: 99", "1, "], 99)
        self.refused(ENGINE.shell, {**CYLINDER, "material": 99}, ["material: 99"])
        self.refused(ENGINE.external, {**VACUUM, "material": 99}, ["material: 99"])
        self.refused(ENGINE.flange, {**RING, "material_class": 99}, ["material_class: 99"])

    def test_a_modulus_beyond_the_end_of_its_table_is_named(self):
        self.refused(ENGINE.modulus, 1400.0, ["table 1", "1400 F"], 1)
        head = {**CYLINDER, "element": "torispherical", "L": 90.0, "r": 6.0, "T": 1400.0}
        self.refused(ENGINE.shell, {**head, "Sy": 30000.0}, ["table 1", "1400 F"])
        self.assertIsNone(ENGINE.shell(head).t_14f)

    def test_moduli_of_pd_5500_go_by_the_chart(self):
        carbon, austenitic = (ENGINE.modulus(70.0, code="PD 5500", chart=c) for c in ("CS-2", "HA-3"))
        self.assertNotEqual(carbon, austenitic)
        self.refused(lambda chart: ENGINE.modulus(70.0, 1, "PD 5500", chart), "", ["chart", "'PD 5500'"])
        self.refused(lambda chart: ENGINE.modulus(70.0, 1, "VIII-1", chart), "CS-2", ["chart: 'CS-2'"])

    def test_a_text_that_the_report_cannot_show_is_named(self):
        for value in ("x" * 201, "\u6cd5\u5170", "a\nb", "a\0b", 3):
            self.refused(ENGINE.flange, {**RING, "description": value}, ["description", repr(value)])
        self.refused(ENGINE.flange, {**RING, "material": "x" * 16}, ["material", "15"])
        shown = ENGINE.flange({**RING, "description": "Fl\xe4nsch \xb0"}).report
        self.assertTrue(any("Fl\xe4nsch \xb0" in line.text for line in shown))

    def test_the_report_shows_the_beginning_of_a_long_description(self):
        def thickness(description):
            return ENGINE.flange({**RING, "kind": "thickness", "description": description}).report

        lines = [line.text for line in thickness("Channel girth flange")]
        self.assertTrue(any(line.endswith("Description: Channel girth f") for line in lines))
        # a colon as the 15th and last character is a flag, within a longer text it is none
        without = thickness("Channel flange")
        self.assertEqual(thickness("Channel flange: second"), without)
        self.assertNotEqual(thickness("Channel flange:"), without)

    def test_the_minimum_of_air_and_water_is_for_materials_of_its_list(self):
        # UG-16(b)(4): 3/32 in
        thin = {**CYLINDER, "P": 1.0, "service": "air, steam and water"}
        self.refused(ENGINE.shell, thin, ["material_name"])
        self.assertEqual(ENGINE.shell({**thin, "material_name": "SA-516 70"}).t_req, 0.09375)
        self.assertEqual(ENGINE.shell({**thin, "material_name": "SA-240 304"}).t_req, 0.0625)

    def test_a_partition_gasket_counts_when_any_of_its_keys_is_given(self):
        part = {"lp": 10.0, "mPart": 1.0, "yPart": 200.0, "sketch_part": "1a", "column_part": "II"}
        by_key = ENGINE.flange({**RING, **part})
        self.assertEqual(by_key, ENGINE.flange({**RING, **part, "partition_gasket": True}))
        self.assertNotEqual(by_key.report, ENGINE.flange(RING).report)

    def test_numbers_of_numpy(self):
        try:
            import numpy
        except ImportError:
            print("numpy is not installed: its numbers are not tested", file=sys.stderr)
            self.skipTest("no numpy")
        expected = ENGINE.shell(CYLINDER)
        for kind in (numpy.float64, numpy.float32, numpy.array):
            self.assertEqual(ENGINE.shell({**CYLINDER, "t": kind(1.125)}), expected)
        flags = {"material": numpy.int64(1), "outside": numpy.bool_(False)}
        self.assertEqual(ENGINE.shell({**CYLINDER, **flags}), expected)
        for value in (numpy.array([1.125]), numpy.complex64(1), numpy.bool_(True), numpy.float32("nan")):
            self.refused(ENGINE.shell, {**CYLINDER, "t": value}, ["t: ", repr(value)])

    def test_a_chart_that_the_data_files_do_not_have_is_named(self):
        self.refused(ENGINE.external, {**VACUUM, "chart": "CS-22"}, ["'CS-22'", "CS-2"])
        self.refused(ENGINE.external, {**VACUUM, "chart": "CS-2 at 300"}, ["'CS-2 at 300'", "8"])
        self.refused(ENGINE.external, {**VACUUM, "chart": 2}, ["chart"])

    def test_a_choice_may_be_given_by_its_number(self):
        by_name, by_number = ENGINE.flange(RING), ENGINE.flange({**RING, "type": 5})
        self.assertEqual(by_name, by_number)

    def test_the_record_keys_are_those_of_the_header(self):
        elements = {int(n) for n in re.findall(r"TARVANE_\w+ = (\d+),\s*/\*", HEADER.read_text())}
        for name, (element, key) in _flange._RECORD.items():
            self.assertIn(element, elements, name)
        header = dict(re.findall(r"TARVANE_(\w+) = (\d+),", HEADER.read_text()))
        shared = [name for name in _flange._RECORD if name in header]
        self.assertGreater(len(shared), 30)
        for name in shared:
            self.assertEqual(int(header[name]), _flange._RECORD[name][0], name)


class Library(unittest.TestCase):
    def setUp(self):
        self.path = Path(ENGINE._library.handle._name)

    def python(self, program, cwd, **environment):
        """A Python of its own: the library is loaded once a process."""
        kept = {name: value for name, value in os.environ.items() if name != "TARVANE_LIBRARY"}
        return subprocess.run(
            [sys.executable, "-c", "import tarvane\n" + program], cwd=cwd, env={**kept, **environment},
            capture_output=True, text=True, check=False,
        )  # fmt: skip

    def test_a_missing_library_tells_how_to_name_it(self):
        for call in ("tarvane.Engine('/no/such/libtarvane.so')", "tarvane.Engine()"):
            with tempfile.TemporaryDirectory() as folder:
                found = self.python(call, folder, LD_LIBRARY_PATH="", TARVANE_LIBRARY="")
            self.assertIn("OSError", found.stderr)
            self.assertIn("TARVANE_LIBRARY", found.stderr)

    def test_another_library_is_not_taken(self):
        another = ctypes.util.find_library("c")
        found = self.python(f"tarvane.Engine({another!r})", "/")
        self.assertIn("is not the tarvane library", found.stderr)

    def test_a_library_of_the_working_folder_needs_no_path(self):
        program = f"print(tarvane.Engine({self.path.name!r}).modulus(70.0, 1))"
        found = self.python(program, self.path.parent)
        self.assertEqual(found.stdout.strip(), str(ENGINE.modulus(70.0, 1)), found.stderr)

    def test_a_data_folder_that_is_none_is_refused(self):
        for folder in ("/no/such/folder", self.path):
            with self.assertRaises(NotADirectoryError):
                tarvane.Engine(self.path, data_folder=folder)
        with tempfile.TemporaryDirectory() as folder:
            long = Path(folder, *["d" * 100] * 3)
            long.mkdir(parents=True)
            with self.assertRaises(ValueError):
                tarvane.Engine(self.path, data_folder=long)

    def test_the_data_files_come_from_the_data_folder(self):
        program = (
            f"e = tarvane.Engine({str(self.path)!r}, data_folder='bolts')\n"
            f"print(e.modulus(70.0, 1))\n"
            f"e = tarvane.Engine({str(self.path)!r}, data_folder={str(self.path.parent)!r})\n"
            f"print(e.modulus(70.0, 1) > 20.0)\n"
        )
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "bolts").mkdir()
            Path(folder, "bolts", "BOLTDATA.TXT").touch()
            found = self.python(program, folder)
        self.assertEqual(found.stdout.split(), ["0.0", "True"], found.stderr)

    def test_carbon_steel_does_not_stand_in_for_a_table_that_ends(self):
        text = ENGINE._library.data_file("ElastAlp07.txt")
        row = next(line for line in text.splitlines() if line.split()[:1] == ["21"])
        last = [value for value in row.split() if value != "0.00"][-2]  # at 1100 F
        program = (
            f"e = tarvane.Engine({str(self.path)!r}, data_folder='short')\n"
            "print(e.modulus(900.0, 21) > 20.0, e.modulus(1080.0, 1) > 18.0)\n"
            "e.modulus(1080.0, 21)"
        )
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "short").mkdir()
            short = row[:62] + row[62:].replace(last, "0.00".rjust(len(last)), 1)
            Path(folder, "short", "ElastAlp07.txt").write_text(text.replace(row, short), "latin-1")
            found = self.python(program, folder)
        self.assertEqual(found.stdout.split(), ["True", "True"], found.stderr)
        self.assertIn("InputError: reference: table 21", found.stderr)
        self.assertIn("1080 F", found.stderr)

    def test_a_folder_without_data_files_is_refused(self):
        with tempfile.TemporaryDirectory() as folder:
            with self.assertRaises(FileNotFoundError) as caught:
                tarvane.Engine(self.path, data_folder=folder)
            self.assertIn(folder, str(caught.exception))
            self.assertIn("ElastAlp07.txt", str(caught.exception))

    def test_a_path_that_is_none_is_named(self):
        for value in ("", 3):
            for name in ("library", "data_folder"):
                with self.assertRaises((TypeError, ValueError)) as caught:
                    tarvane.Engine(**{"library": self.path, name: value})
                self.assertIn(f"{name}: {value!r}", str(caught.exception))

    def test_an_engine_does_not_take_the_data_folder_of_another(self):
        # once given, a folder can't be taken back from the engine
        program = (
            f"path, folder = {str(self.path)!r}, {str(self.path.parent)!r}\n"
            "first, second = tarvane.Engine(path), tarvane.Engine(path, data_folder=folder)\n"
            "print(first.modulus(70.0, 1) == second.modulus(70.0, 1))\n"
            "try:\n    first.modulus(70.0, 1)\nexcept RuntimeError as error: print(folder in str(error))\n"
            "print(tarvane.Engine(path, folder).modulus(70.0, 1) > 20.0)\n"
        )
        found = self.python(program, "/")
        self.assertEqual(found.stdout.split(), ["True"] * 3, found.stderr)

    def test_where_the_engine_looks_for_its_data_is_that_of_its_sources(self):
        source = (HEADER.parents[2] / "engine" / "host" / "platform.h").read_text()
        keys = dict(re.findall(r'std::string_view (\w+_KEY) = "(.*)";', source))
        self.assertEqual(_library._PRODUCT.decode(), keys["PRODUCT_KEY"])
        self.assertEqual(_library._VERSION.decode(), keys["VERSION_KEY"])
        self.assertIn("[CS-2]", ENGINE._library.data_file("ExtChartData.txt"))

    def test_the_package_needs_the_standard_library_alone(self):
        # a folder of its own: neither installed packages nor those of the user
        found = subprocess.run(
            [sys.executable, "-I", "-S", "-c",
             f"import sys; sys.path.append({str(PACKAGE.parent)!r}); import tarvane; "
             f"print(tarvane.Engine({str(self.path)!r}).modulus(70.0, 1) > 20.0, 'numpy' in sys.modules)"],
            capture_output=True, text=True, check=False,
        )  # fmt: skip
        self.assertEqual(found.stdout.split(), ["True", "False"], found.stderr)


class Flange(unittest.TestCase):
    def test_bolt_loads_are_those_of_appendix_2(self):
        result = ENGINE.flange(RING)
        gasket_width = (27.0 - 25.0) / 2  # N; b0 = N / 2 = 0.5, b = sqrt(b0) / 2
        b = 0.5 * (gasket_width / 2) ** 0.5
        g = 27.0 - 2 * b
        h = 3.14159265 / 4 * g * g * 100.0
        self.assertAlmostEqual(result.G, g, places=4)
        self.assertAlmostEqual(result.Wm1 / (h + 2 * b * 3.14159265 * g * 1.0 * 100.0), 1.0, places=5)
        self.assertAlmostEqual(result.Wm2 / (3.14159265 * b * g * 200.0), 1.0, places=5)
        self.assertAlmostEqual(result.Ab, 20 * 0.551, places=3)

    def test_a_required_thickness_is_none_where_there_is_none(self):
        self.assertIsNone(ENGINE.flange(RING).t_req)
        self.assertIsNone(ENGINE.flange({**RING, "P": -15.0}).t_req)
        self.assertIsNone(ENGINE.flange({**RING, "kind": "thickness", "A": 20.0}).t_req)  # refused
        self.assertGreater(ENGINE.flange({**RING, "kind": "thickness"}).t_req, 0.5)
        self.assertGreater(ENGINE.flange({**RING, "kind": "thickness", "P": -15.0}).t_req, 0.5)
        short = ENGINE.flange({**RING, "kind": "thickness", "bolts": 4, "P": 400.0})
        self.assertLess(short.t_req, 0.0)
        cover = {**{key: RING[key] for key in RING if key != "B"}, "type": "blind"}
        self.assertGreater(ENGINE.flange(cover).t_req, 0.5)
        self.assertIsNone(ENGINE.flange({**cover, "P": -15.0}).t_req)

    def test_the_report_is_a_list_of_lines(self):
        report = ENGINE.flange(RING).report
        self.assertGreater(len(report), 100)
        self.assertTrue(any("Flange Input Data Values" in line.text for line in report))
        self.assertEqual(report[-1].marks, (0, 0, 0, 0, 0, 2))
        self.assertIn("TARVANE", str(report[-1]))

    def test_a_flange_that_cannot_be_calculated_stops(self):
        with self.assertRaises(tarvane.EngineStopped):
            ENGINE.flange({**RING, "Fid": 7.0, "ci": 4.1})  # the corroded bore grows over A
        self.assertIsNotNone(ENGINE.flange(RING).mawp)  # and the engine goes on

    def test_a_flange_that_is_refused_has_its_message_in_the_report(self):
        result = ENGINE.flange({**RING, "A": 20.0})
        self.assertIsNone(result.mawp)
        self.assertTrue(any("must be > Inside Diameter" in line.text for line in result.report))


class Shell(unittest.TestCase):
    def test_a_published_cylinder(self):
        # ASME PTB-4, E4.3.1: 0.8119 in. without the corrosion allowance
        self.assertAlmostEqual(ENGINE.shell(CYLINDER).t_req, 0.8119, places=4)

    def test_the_pressure_at_the_required_thickness_is_the_design_pressure(self):
        required = ENGINE.shell(CYLINDER).t_req
        at_it = ENGINE.shell({**CYLINDER, "t": required + 0.125})
        self.assertAlmostEqual(at_it.mawp / 356.0, 1.0, places=5)

    def test_a_cone_without_a_knuckle_has_no_corrosion_of_one(self):
        cone = ENGINE.shell({**CYLINDER, "element": "cone", "alpha": 20.0})
        self.assertIsNone(cone.fail_ca_knuckle)
        self.assertIsNone(cone.t_14f)


class External(unittest.TestCase):
    def test_a_sphere_by_buckling_stress(self):
        # VIII-2 4.4.7: Fhe = 0.075 E t / Ro in the elastic range, FS 2, Pa = 2 Fha t / Ro
        result = ENGINE.external(VACUUM)
        self.assertEqual(result.Do, 61.0)
        modulus = ENGINE.modulus(200.0, 1) * 1e6
        fhe = 0.075 * modulus * 0.5 / 30.5
        self.assertGreater(fhe / 38000.0, 0.55)  # not elastic: the third range
        fic = 0.18 * fhe + 0.45 * 38000.0
        fs = 2.407 - 0.741 * fic / 38000.0 if fic > 0.55 * 38000.0 else 2.0
        self.assertAlmostEqual(result.maep / (2 * fic / fs * 0.5 / 30.5), 1.0, places=4)
        self.assertTrue(any("Case 2286" in line.text for line in result.report))


class Calls(unittest.TestCase):
    def test_results_do_not_depend_on_the_calls_before(self):
        first = ENGINE.flange(RING)
        ENGINE.external(VACUUM)
        ENGINE.shell(CYLINDER)
        self.assertEqual(ENGINE.flange(RING), first)

    def test_threads_wait_for_one_another(self):
        expected = {"flange": ENGINE.flange(RING), "shell": ENGINE.shell(CYLINDER)}
        wrong = []

        def work():
            engine = tarvane.Engine(ENGINE._library.handle._name)  # its state is that of ENGINE
            for _ in range(5):
                if engine.flange(RING) != expected["flange"]:
                    wrong.append("flange")
                if ENGINE.shell(CYLINDER) != expected["shell"]:
                    wrong.append("shell")

        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(wrong, [])

    def test_no_value_is_the_single_precision_number(self):
        self.assertEqual(ctypes.c_float(tarvane.NO_VALUE).value, tarvane.NO_VALUE)

    def test_help_tells_the_unit_of_every_key(self):
        told = {"flange": (tarvane.FLANGE_KEYS, tarvane.FLANGE_TEXTS, tarvane.FLANGE_FLAGS),
                "shell": (tarvane.SHELL_KEYS, tarvane.SHELL_TEXTS),
                "external": (tarvane.EXTERNAL_KEYS, tarvane.EXTERNAL_TEXTS)}  # fmt: skip
        text = pydoc.plain(pydoc.render_doc(tarvane))
        self.assertEqual(set(told), set(re.findall(r"^     \|  (\w+)\(self, data", text, re.MULTILINE)))
        for method, tables in told.items():
            text = pydoc.plain(pydoc.render_doc(getattr(tarvane.Engine, method)))
            for name, key in [pair for keys in tables for pair in keys.items()]:
                unit = getattr(key, "unit", "")
                start = re.escape(name) + r" +" + (re.escape(f"({unit}) ") if unit else r"\w")
                self.assertRegex(text, rf"(?m)^ +{start}")

    def test_help_tells_the_unit_of_every_result(self):
        dimensionless = {"A", "record", "report"}
        for result in (tarvane.FlangeResult, tarvane.ShellResult, tarvane.ExternalResult):
            text = pydoc.plain(pydoc.render_doc(result))
            paragraphs = re.split(r"\n \|  (?=\w+  )", text)
            for field in dataclasses.fields(result):
                told = [p for p in paragraphs if p.startswith(field.name + " ")]
                self.assertEqual(len(told), 1, field.name)
                if field.name not in dimensionless:
                    self.assertRegex(told[0], r"\((in|psi|lb|in-lb|sq in)\)", field.name)

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

    def test_every_key_tells_its_meaning(self):
        for keys in (tarvane.FLANGE_KEYS, tarvane.SHELL_KEYS, tarvane.EXTERNAL_KEYS):
            for name, key in keys.items():
                self.assertTrue(key.meaning, name)


if __name__ == "__main__":
    unittest.main()
