"""Sweeps, with numpy and without; where values come from; the types of the package."""

import array
import csv
import io
import itertools
import math
import os
import signal
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest
from pathlib import Path
from unittest import mock

import tarvane
from tarvane import _bar, _processes, _rows

try:
    import numpy
except ImportError:
    numpy = None
try:
    import pandas
except ImportError:
    pandas = None

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
    return NoNumpy()


class NoNumpy:
    """Each module has the function by its own name."""

    MODULES = ("_rows", "_block", "_sweep")

    def __enter__(self):
        self._patches = [mock.patch(f"tarvane.{name}.numpy", lambda: None) for name in self.MODULES]
        for patch in self._patches:
            patch.start()

    def __exit__(self, *_):
        for patch in self._patches:
            patch.stop()


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
        closing = ["status", "reason", "governing", "passed"]
        self.assertEqual(list(table), ["flange[0].t", "flange[0].P", *self.RESULTS, *closing])
        self.assertEqual(table.rows, 4)
        self.assertEqual(table["passed"], [value == 1.0 for value in table[PASSED]])
        self.assertEqual(table["governing"], ["flange[0]." + check for check in table[GOVERNING]])
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
        self.assertEqual((table["governing"][1:], table["passed"][1:]), ([None, None], [None, None]))
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


def columns_of(table):
    """Numbers by their bits."""
    bits = lambda value: struct.pack("d", value) if isinstance(value, float) else value
    return {name: [bits(value) for value in (column if isinstance(column, list) else column.tolist())]
            for name, column in table.items()}  # fmt: skip


class Grids(unittest.TestCase):
    def test_every_combination_is_a_row(self):
        grid = {"flange[0].t": THICKNESSES, "vessel.ci": 0.0, "flange[0].P": PRESSURES[:3]}
        pairs = list(itertools.product(THICKNESSES, PRESSURES[:3]))
        rows = {"flange[0].t": [t for t, _ in pairs], "vessel.ci": 0.0, "flange[0].P": [P for _, P in pairs]}
        wanted = columns_of(tarvane.sweep(BASE, rows, [MAWP, PASSED, BY]))
        for numpy_or_not in (without_numpy, mock.MagicMock):
            with numpy_or_not():
                table = tarvane.sweep(BASE, grid, [MAWP, PASSED, BY], grid=True)
                self.assertEqual((table.rows, columns_of(table)), (12, wanted))
                none = tarvane.sweep(BASE, {**grid, "flange[0].P": []}, [MAWP], grid=True)
                self.assertEqual((none.rows, len(none[MAWP])), (0, 0))
                one = tarvane.sweep(BASE, {"flange[0].t": 1.19}, [MAWP], grid=True)
                self.assertEqual(one["status"], "ok")


class Files(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def write(self, text, name="rows.csv"):
        path = self.folder / name
        path.write_bytes(text.encode())
        return path

    def test_rows_with_a_line_of_units(self):
        path = self.write("\ufeffflange[0].t, flange[0].P\r\nmm,bar\r\n30.226,10\r\n\r\n25,12.5\r\n")
        table = tarvane.sweep(BASE, path, [MAWP])
        self.assertEqual(list(table)[:2], ["flange[0].t [mm]", "flange[0].P [bar]"])
        self.assertEqual(list(table["flange[0].t [mm]"]), [30.226, 25.0])
        for i, (t, P) in enumerate((("30.226 mm", "10 bar"), ("25 mm", "12.5 bar"))):
            flange = tarvane.run({"flange": [{**FLANGE, "t": t, "P": P}]}, report=False).flange[0]
            self.assertEqual(single(table[MAWP][i]), single(flange.results.mawp))

    def test_without_units_and_with_some(self):
        inch = columns_of(tarvane.sweep(BASE, self.write("flange[0].t,flange[0].P\n1,100\n2,200\n"), [MAWP]))
        named = columns_of(tarvane.sweep(BASE, self.write("flange[0].t,flange[0].P\n,psi\n1,100\n2,200\n"), [MAWP]))
        self.assertEqual((inch[MAWP], inch["status"]), (named[MAWP], ["ok", "ok"]))
        self.assertIn("flange[0].P [psi]", named)

    def test_cells(self):
        table = tarvane.sweep(BASE, self.write("flange[0].t,flange[0].P\n1.19,\n1.19,150\n1.19\n"), [MAWP])
        self.assertEqual(table["status"], ["fault", "ok", "fault"])
        for text, reason in (
            ("flange[0].t\n1,2\n", "line 2: 2 values, but 1 paths"),
            ("flange[0].t\n1\n1,5 x\n", "line 3: 2 values"),
            ("flange[0].t\n1\none\n", "line 3: 'one' is no number"),
            ("flange[0].t\nbar\n1\n", "in one of"),
            ("flange[0].tt\n1\n", "the nearest is t"),
            ("", "a line of paths is expected"),
        ):
            with self.subTest(text), self.assertRaisesRegex(tarvane.InputError, reason):
                tarvane.sweep(BASE, self.write(text), [MAWP])
        with self.assertRaisesRegex(tarvane.InputError, "a file has rows, no grid"):
            tarvane.sweep(BASE, self.write("flange[0].t\n1\n"), [MAWP], grid=True)
        with self.assertRaises(FileNotFoundError):
            tarvane.sweep(BASE, self.folder / "none.csv", [MAWP])
        none = tarvane.sweep(BASE, self.write("flange[0].t\n"), [MAWP])
        self.assertEqual((none.rows, none["status"]), (0, []))

    def test_blocks_to_a_file(self):
        rows = 250
        given = {"flange[0].t": [0.5 + i / 100 for i in range(rows)], "flange[0].P": 150.0}
        given["flange[0].t"][7] = math.nan
        table = tarvane.sweep(BASE, given, [MAWP, BY, PASSED])
        out = self.folder / "out.csv"
        for how in ({"block": 60}, {"block": 1000}, {}, {"processes": 2}):
            with self.subTest(how):
                written = tarvane.sweep_to_file(BASE, given, [MAWP, BY, PASSED], out, **how)
                self.assertEqual((written.path, written.rows, written.faulty), (str(out), rows, 1))
                with open(out, encoding="utf-8", newline="") as file:
                    lines = list(csv.reader(file))
                self.assertEqual(lines[0], list(table))
                self.assertEqual(len(lines), rows + 1)
                for i, line in enumerate(lines[1:]):
                    cells = dict(zip(lines[0], line))
                    mawp = float(cells[MAWP] or "nan")
                    self.assertEqual(struct.pack("d", mawp), struct.pack("d", table[MAWP][i]))
                    self.assertEqual((cells["status"], cells["reason"]), (table["status"][i], table["reason"][i]))
                    passed = {"true": True, "false": False, "": None}[cells["passed"]]
                    self.assertEqual((passed, cells["governing"] or None), (table["passed"][i], table["governing"][i]))
                # What was written can be read as rows.
                out.unlink()
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_a_file_is_complete_or_not_there(self):
        out = self.folder / "out.csv"
        out.write_text("before")
        with self.assertRaises(tarvane.InputError):
            tarvane.sweep_to_file(BASE, {"flange[0].tt": 1.0}, [MAWP], out)

        def interrupted(*_):
            raise KeyboardInterrupt

        with self.assertRaises(KeyboardInterrupt):
            tarvane.sweep_to_file(BASE, {"flange[0].t": [1.0] * 300}, [MAWP], out, block=100, progress=interrupted)
        self.assertEqual([path.name for path in self.folder.iterdir()], ["out.csv"])
        self.assertEqual(out.read_text(), "before")
        ended = tarvane.sweep_to_file(BASE, {"flange[0].t": [1.0] * 300}, [MAWP], out, block=100,
                                      progress=lambda done, of: done < 200)  # fmt: skip
        self.assertEqual((ended.rows, len(out.read_text().splitlines())), (200, 201))


class Several(unittest.TestCase):
    """Processes."""

    ROWS = 900
    GIVEN = {"flange[0].t": [0.6 + i / 500 for i in range(ROWS)], "flange[0].P": 150.0}

    def test_equal_to_one(self):
        given = {**self.GIVEN, "flange[0].t": [*self.GIVEN["flange[0].t"][:-1], -1.0]}
        alone = columns_of(tarvane.sweep(BASE, given, [MAWP, BY, GOVERNING]))
        seen = []
        table = tarvane.sweep(BASE, given, [MAWP, BY, GOVERNING], processes=2, progress=lambda *of: seen.append(of))
        self.assertEqual(columns_of(table), alone)
        self.assertEqual((seen[-1], sorted(seen)), ((self.ROWS, self.ROWS), seen))
        self.assertGreater(len(seen), 2)
        self.assertEqual([str(fault) for fault in table.faults], [table["reason"][-1]])

    def test_faults_of_the_call(self):
        with self.assertRaisesRegex(tarvane.InputError, "the nearest is t"):
            tarvane.sweep(BASE, {"flange[0].tt": [1.0] * 300}, [MAWP], processes=2)
        for wrong in (0, -1, 1.5, True, "2"):
            with self.assertRaisesRegex(tarvane.InputError, "a whole number from 1 on is expected"):
                tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=wrong)

    def test_early_end(self):
        table = tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=2, progress=lambda done, of: False)
        made = table["status"].count("ok")
        self.assertTrue(0 < made < self.ROWS)
        self.assertEqual(table["status"], ["ok"] * made + ["not made"] * (self.ROWS - made))
        self.assertEqual(list(table["flange[0].t"]), self.GIVEN["flange[0].t"])

    def test_a_row_that_ends_its_process(self):
        if os.name != "posix":
            not_run(self, "no signals")
        poison, wanted = 333, tarvane.sweep(BASE, self.GIVEN, [MAWP])
        ask = _processes._Process._ask

        def ask_or_die(process, question):
            if len(question) == 2 and any(t == self.GIVEN["flange[0].t"][poison] for t in question[0][0]):
                process._process.kill()
            return ask(process, question)

        with mock.patch.object(_processes._Process, "_ask", ask_or_die):
            table = tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=2)
        self.assertEqual([i for i, status in enumerate(table["status"]) if status != "ok"], [poison])
        self.assertRegex(table["reason"][poison], r"^the calculation ended its process: signal \d+$")
        for i in range(self.ROWS):
            if i != poison:
                self.assertEqual(struct.pack("d", table[MAWP][i]), struct.pack("d", wanted[MAWP][i]))

    def test_a_process_that_is_ended(self):
        if os.name != "posix":
            not_run(self, "no signals")
        ended = []
        calculate = _processes._Process.calculate

        def end_the_first(process, columns, rows):
            if not ended:
                ended.append(process._process.pid)
                threading.Timer(0.01, os.kill, (ended[0], signal.SIGKILL)).start()
                time.sleep(0.05)
            return calculate(process, columns, rows)

        with mock.patch.object(_processes._Process, "calculate", end_the_first):
            table = tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=2)
        self.assertEqual((len(ended), table["status"]), (1, ["ok"] * self.ROWS))
        self.assertEqual(columns_of(table), columns_of(tarvane.sweep(BASE, self.GIVEN, [MAWP])))

    def test_no_process_is_left(self):
        started = []
        begin = _processes._Process.__init__

        def begun(process, *arguments):
            begin(process, *arguments)
            started.append(process._process)

        with mock.patch.object(_processes._Process, "__init__", begun):
            tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=2)
            with self.assertRaises(KeyboardInterrupt):
                tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=2, progress=mock.Mock(side_effect=KeyboardInterrupt))
        self.assertGreaterEqual(len(started), 2)
        self.assertEqual([process.poll() for process in started if process.poll() is None], [])

    def test_no_process_is_left_that_begins_as_the_sweep_ends(self):
        started, begins = [], itertools.count()
        begin = _processes._Process.__init__

        def begun_late(process, *arguments):
            late = next(begins) == 1
            begin(process, *arguments)
            started.append(process._process)
            if late:
                time.sleep(2.0)  # the other one has answered, and the sweep has ended

        with mock.patch.object(_processes._Process, "__init__", begun_late):
            with self.assertRaises(KeyboardInterrupt):
                tarvane.sweep(BASE, self.GIVEN, [MAWP], processes=2, progress=mock.Mock(side_effect=KeyboardInterrupt))
        self.assertEqual(len(started), 2)
        self.assertEqual([process.poll() for process in started if process.poll() is None], [])


class Bars(unittest.TestCase):
    class Terminal(io.StringIO):
        def isatty(self):
            return True

    def test_elsewhere_than_on_a_terminal(self):
        now, target = [0.0], io.StringIO()
        bar = _bar.Bar(target, lambda: now[0])
        for seconds, done in ((1, 10), (12, 120), (13, 130), (100, 1000)):
            now[0] = float(seconds)
            bar.tell(done, 1000)
        self.assertEqual(target.getvalue().splitlines(),
                         ["sweep: 120 of 1000 rows, 10 a second, 1:28 left",
                          "sweep: 1000 of 1000 rows, 10 a second, 1:40"])  # fmt: skip

    def test_on_a_terminal(self):
        now, target = [0.0], self.Terminal()
        bar = _bar.Bar(target, lambda: now[0])
        for seconds, done in ((1, 500), (1.1, 550), (2, 1000)):
            now[0] = float(seconds)
            bar.tell(done, 1000)
        lines = target.getvalue().split("\r")[1:]
        self.assertEqual(len(lines), 2)
        self.assertIn("[" + "#" * 15 + " " * 15 + "] 500 of 1000 rows, 500 a second, 0:01 left", lines[0])
        self.assertTrue(lines[1].endswith("\n"))

    def test_of_a_sweep(self):
        with mock.patch.object(sys, "stderr", io.StringIO()) as target:
            tarvane.sweep(BASE, {"flange[0].t": [1.0, 2.0]}, [MAWP], progress=True)
        self.assertRegex(target.getvalue(), r"^sweep: 2 of 2 rows, \d+ a second, 0:0\d\n$")
        with mock.patch.object(sys, "stderr", io.StringIO()) as target:
            tarvane.sweep(BASE, {"flange[0].t": [1.0, 2.0]}, [MAWP], progress=False)
        self.assertEqual(target.getvalue(), "")


class Frames(unittest.TestCase):
    def test_in_and_out(self):
        if pandas is None:
            not_run(self, "no pandas")
        rows = pandas.DataFrame({"flange[0].t": THICKNESSES, "flange[0].P": PRESSURES})
        table = tarvane.sweep(BASE, dict(rows.items()), [MAWP, BY])
        frame = table.to_frame()
        self.assertEqual(list(frame.columns), list(table))
        self.assertEqual(frame[MAWP].tolist(), list(table[MAWP]))
        self.assertEqual(frame["passed"].tolist(), table["passed"])
        later = tarvane.sweep(BASE, dict(rows[1:3].items()), [MAWP])
        self.assertEqual(list(later[MAWP]), list(table[MAWP][1:3]))
        self.assertEqual(len(tarvane.sweep(BASE, {"flange[0].t": 1.19}, [MAWP]).to_frame()), 1)
        self.assertEqual(len(tarvane.sweep(BASE, {"flange[0].t": []}, [MAWP]).to_frame()), 0)

    def test_without_pandas(self):
        with mock.patch.dict(sys.modules, {"pandas": None}), self.assertRaises(ImportError):
            tarvane.sweep(BASE, {"flange[0].t": 1.19}, [MAWP]).to_frame()


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
