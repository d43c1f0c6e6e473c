"""Sweeps, with numpy and without; where values come from; the types of the package."""

import array
import math
import struct
import subprocess
import sys
import unittest
from pathlib import Path
from unittest import mock

import tarvane
from tarvane import _sweep

try:
    import numpy
except ImportError:
    numpy = None

PACKAGE = Path(tarvane.__file__).parent
SOURCE = Path(__file__).parents[2]
FLANGE = {
    "type": "weld neck", "P": 150, "T": 300, "B": 12.0, "A": 19.0, "t": 1.19, "g0": 0.375, "g1": 1.19, "h": 3.25,
    "material": "SA-105", "bolting": "TEMA", "C": 17.0, "n": 12, "a": 0.875, "bolt_material": "SA-193 B7",
    "Fod": 15.0, "Fid": 12.0, "Go": 14.75, "Gi": 14.0, "m": 3, "y": 10000, "facing": "1a",
}  # fmt: skip
BASE = {"flange": [FLANGE]}
MAWP, RATIO, PASSED, GOVERNING = "flange[0].results.mawp", "flange[0].ratio", "flange[0].passed", "flange[0].governing"
BY = "flange[0].results.mawp_by"
THICKNESSES, PRESSURES = [0.8, 1.0, 1.19, 1.5], [100.0, 150.0, 200.0, 450.0]


def single(value):
    """Its bits: a result in JSON is the shortest decimal of them."""
    return struct.pack("f", value)


def not_run(test, reason):
    print(f"{test.id()}: not run: {reason}", file=sys.stderr)
    test.skipTest(reason)


def without_numpy():
    return mock.patch.object(_sweep, "_numpy", lambda: None)


class Sweeps(unittest.TestCase):
    def check_rows(self, table):
        for i, (t, P) in enumerate(zip(THICKNESSES, PRESSURES)):
            flange = tarvane.run({"flange": [{**FLANGE, "t": t, "P": P}]}, report=False).flange[0]
            self.assertEqual(single(table[MAWP][i]), single(flange.results.mawp))
            self.assertEqual(table[BY][i], flange.results.mawp_by)
            self.assertEqual(table[PASSED][i], flange.passed)
            governing = next(check for check in flange.checks if check.force == "decides")
            self.assertEqual((table[GOVERNING][i], single(table[RATIO][i])), (governing.id, single(governing.ratio)))
            self.assertEqual(table["vessel.governing"][i], "flange[0]")
            self.assertEqual((table["flange[0].t"][i], table["status"][i], table["reason"][i]), (t, "ok", ""))

    RESULTS = (MAWP, BY, PASSED, GOVERNING, RATIO, "vessel.governing")

    def test_each_row_is_its_calculation(self):
        with without_numpy():
            table = tarvane.sweep(BASE, {"flange[0].t": THICKNESSES, "flange[0].P": tuple(PRESSURES)}, self.RESULTS)
        self.assertIsInstance(table[MAWP], list)
        self.check_rows(table)
        self.assertEqual(list(table), ["flange[0].t", "flange[0].P", *self.RESULTS, "status", "reason"])
        self.assertEqual(table.rows, 4)
        self.assertNotEqual(set(table[PASSED]), {1.0})

    def test_arrays_of_numpy(self):
        if numpy is None:
            not_run(self, "no numpy")
        inputs = {"flange[0].t": numpy.array(THICKNESSES), "flange[0].P": numpy.array(PRESSURES, dtype="f4")[::1]}
        table = tarvane.sweep(BASE, inputs, results=self.RESULTS)
        self.assertEqual((table[MAWP].dtype, table[MAWP].shape), (numpy.dtype("f8"), (4,)))
        self.check_rows(table)
        every_second = numpy.array([0.8, 7.0, 1.0, 7.0, 1.19, 7.0, 1.5, 7.0])[::2]
        strided = tarvane.sweep(BASE, {"flange[0].t": every_second, "flange[0].P": inputs["flange[0].P"]}, [MAWP])
        self.assertEqual(list(strided[MAWP]), list(table[MAWP]))
        whole = tarvane.sweep(BASE, {"flange[0].n": numpy.array([12, 16]), "flange[0].t": numpy.float32(1.19)}, [PASSED])
        self.assertEqual(whole.rows, 2)
        with self.assertRaisesRegex(tarvane.InputError, "one dimension is expected, not of 2"):
            tarvane.sweep(BASE, {"flange[0].t": numpy.ones((2, 2))}, [MAWP])

    def test_scalars_and_lengths(self):
        for numpy_or_not in (without_numpy, mock.MagicMock):
            with numpy_or_not():
                several = tarvane.sweep(BASE, {"flange[0].t": THICKNESSES, "flange[0].P": 150}, [MAWP])
                self.assertEqual(list(several["flange[0].P"]), [150.0] * 4)
                one = tarvane.sweep(BASE, {"flange[0].t": [1.19], "vessel.ci": 0}, [MAWP])
                self.assertEqual((len(one[MAWP]), list(one["status"])), (1, ["ok"]))
                none = tarvane.sweep(BASE, {"flange[0].t": []}, [MAWP])
                self.assertEqual((none.rows, len(none[MAWP]), none["status"]), (0, 0, []))
                scalar = tarvane.sweep(BASE, {"flange[0].t": 1.19}, [MAWP, BY])
                self.assertEqual(scalar[MAWP], one[MAWP][0])
                self.assertEqual((scalar["status"], scalar["reason"]), ("ok", ""))
                self.assertEqual(tarvane.sweep(BASE, {"flange[0].t": array.array("d", [1.19])}, [])["status"], ["ok"])
        with self.assertRaisesRegex(tarvane.InputError, r"flange\[0\]\.P: 3 values, but 4 of flange\[0\]\.t"):
            tarvane.sweep(BASE, {"flange[0].t": THICKNESSES, "flange[0].P": [1, 2, 3]}, [MAWP])

    def test_rows_at_fault(self):
        table = tarvane.sweep(BASE, {"flange[0].t": [1.19, math.nan, -1.0]}, [MAWP, BY, GOVERNING])
        self.assertEqual(table["status"], ["ok", "fault", "fault"])
        self.assertTrue(math.isnan(table[MAWP][1]) and math.isnan(table[MAWP][2]))
        self.assertEqual((table[BY][1], table[GOVERNING][2]), (None, None))
        self.assertEqual(table["reason"][0], "")
        self.assertRegex(table["reason"][1], r"^flange\[0\]\.t: a number in in\. is expected, not nan")
        self.assertRegex(table["reason"][2], r"^flange\[0\]\.t: ")
        self.assertEqual([str(fault) for fault in table.faults], table["reason"][1:])

    def test_what_there_is_not(self):
        for inputs, results, reason in (
            ({"flange[0].t": 1.0}, ["flange[0].results.mawpp"], "the nearest is flange[0].results.mawp"),
            ({"flange[1].t": 1.0}, [MAWP], "the request has no flange[1]"),
            ({"flange[0].t": "1"}, [MAWP], "'1' (str) is no number"),
            ({"flange[0].t": [1.0, None]}, [MAWP], "None (NoneType) is no number"),
            ({"flange[0].t": 1.0}, MAWP, "a list of paths is expected"),
        ):
            with self.subTest(reason), self.assertRaises(tarvane.InputError) as caught:
                tarvane.sweep(BASE, inputs, results)
            self.assertIn(reason, str(caught.exception))

    def test_a_file_is_a_request_too(self):
        if sys.version_info < (3, 11):
            not_run(self, "a TOML file needs Python 3.11")
        table = tarvane.sweep(SOURCE / "examples/weld_neck_nps12.toml", {"flange[0].t": [1.0, 2.0]}, [MAWP])
        self.assertLess(table[MAWP][0], table[MAWP][1])

    def test_progress_and_an_early_end(self):
        seen = []
        rows = 20000
        thicknesses = [1.0 + i / rows for i in range(rows)]

        def end(done, of):
            seen.append((done, of))
            return False

        table = tarvane.sweep(BASE, {"flange[0].t": thicknesses}, [MAWP], progress=end)
        done, of = seen[0]
        self.assertEqual((len(seen), of), (1, rows))
        self.assertTrue(0 < done < rows)
        self.assertEqual(table["status"], ["ok"] * done + ["not made"] * (rows - done))
        self.assertTrue(math.isnan(table[MAWP][-1]))

        def interrupted(*_):
            raise KeyboardInterrupt

        with self.assertRaises(KeyboardInterrupt):
            tarvane.sweep(BASE, {"flange[0].t": thicknesses}, [MAWP], progress=interrupted)
        self.assertEqual(tarvane.sweep(BASE, {"flange[0].t": 1.19}, [])["status"], "ok")


class Sources(unittest.TestCase):
    def test_of_every_input_of_the_examples(self):
        if sys.version_info < (3, 11):
            not_run(self, "a TOML file needs Python 3.11")
        for path in sorted(SOURCE.glob("examples/*.toml")):
            for component in tarvane.run(path, report=False).components:
                self.assertEqual([name for name, taken in component.inputs.items() if not taken.source], [], path.name)

    def test_of_a_material(self):
        result = tarvane.run({"flange": [FLANGE], "shell": [
            {"kind": "cylinder", "P": 100, "T": 300, "D": 48, "t": 0.5, "material": "SA-516 70", "E": 0.85}]},
            report=False)  # fmt: skip
        flange, shell = result.flange[0].inputs, result.shell[0].inputs
        self.assertEqual(flange["Sfo"].source, "material SA-105 at 300 °F")
        self.assertEqual(flange["Sb"].source, "material SA-193 B7 at 300 °F")
        self.assertEqual(flange["Sa"].source, "material SA-193 B7 at 70 °F")
        self.assertEqual(shell["S"].source, "material SA-516 70 at 300 °F")
        self.assertEqual((shell["E"].source, shell["ci"].source), ("file", "default"))


class Types(unittest.TestCase):
    def test_mypy(self):
        run = subprocess.run(["/usr/bin/env", "mypy", "--strict", "--cache-dir=/dev/null", str(PACKAGE)],
                             capture_output=True, text=True, check=False)  # fmt: skip
        if run.returncode == 127:
            not_run(self, "no mypy")
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)


if __name__ == "__main__":
    unittest.main()
