"""Sweeps on two worker processes of Dask."""

import faulthandler
import math
import os
import signal
import struct
import sys
import tempfile
import threading
import unittest
from unittest import mock

import tarvane
from tarvane import _cluster

try:
    import numpy
    from distributed import Client, LocalCluster
except ImportError as error:
    print(f"sweeps on a cluster: not run: {error}", file=sys.stderr)
    sys.exit(77)
import cluster
import poison
from test_sweep import FLANGE, GOVERNING, MAWP, RATIO

ROWS = 50000
BLOCKS = 20
RESULTS = [MAWP, RATIO, GOVERNING]
ENDED = r"^the calculation ended its process: signal 9$"


def given(rows, poisoned=None):
    thicknesses = numpy.linspace(0.6, 2.4, rows)
    thicknesses[rows // 7] = math.nan
    if poisoned is not None:
        thicknesses[poisoned] = poison.POISON
    return {"flange[0].t": thicknesses, "vessel.P": numpy.linspace(80.0, 300.0, rows)[::-1], "flange[0].T": 300.0}


def bits(value):
    return struct.pack("d", value) if isinstance(value, float) else value


class Sweeps(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cluster = cluster.Cluster(cls.enterClassContext(tempfile.TemporaryDirectory()), 2)
        cls.addClassCleanup(cls.cluster.close)
        cls.client = cls.cluster.client
        flange = {name: value for name, value in FLANGE.items() if name != "P"}
        cls.base = {"vessel": {"P": 150.0}, "flange": [flange]}

    def sweep(self, inputs, results=RESULTS, **options):
        return tarvane.sweep(self.base, inputs, results, **{"client": self.client, **options})

    def check_but(self, poisoned, table, alone, reason):
        self.assertEqual(list(table), list(alone))
        for name, column in alone.items():
            self.assertEqual(type(table[name]), type(column), name)
            differ = [i for i, (a, b) in enumerate(zip(table[name], column)) if bits(a) != bits(b)]
            self.assertTrue(set(differ) <= {poisoned}, (name, differ[:10]))
            self.assertEqual(len(table[name]), len(column))
        self.assertEqual([i for i, status in enumerate(table["status"]) if status != "ok" and i != poisoned],
                         [alone.rows // 7])  # fmt: skip
        if poisoned is not None:
            self.assertEqual((table["status"][poisoned], alone["status"][poisoned]), ("fault", "ok"))
            self.assertRegex(table["reason"][poisoned], reason)
            self.assertTrue(math.isnan(table[MAWP][poisoned]))
            self.assertIsNone(table["governing"][poisoned])

    def test_a_poisoned_row_and_a_worker_that_is_ended(self):
        poisoned = ROWS * 2 // 3
        inputs = given(ROWS, poisoned)
        alone = self.sweep(inputs, client=None)
        ended, told = [], []

        def end_one(done, of):
            told.append((done, of))
            if not ended and done > ROWS // 4:
                ended.append(self.cluster.pids()[0])
                os.kill(ended[0], signal.SIGKILL)

        with mock.patch.object(_cluster, "on_worker", poison.ends_the_engine), \
                mock.patch.object(_cluster, "_SMALLEST", ROWS // BLOCKS), \
                mock.patch.object(_cluster, "_LARGEST", ROWS // BLOCKS):  # fmt: skip
            table = self.sweep(inputs, progress=end_one)
        self.check_but(poisoned, table, alone, ENDED)
        self.assertEqual((len(ended), told[-1], sorted(told)), (1, (ROWS, ROWS), told))
        self.assertLess(told[0][0], ROWS // 4)
        cluster.until(lambda: self.cluster.is_whole(2, ended[0]), "the nanny starts another worker")

    def test_a_row_that_ends_each_worker(self):
        poisoned, rows = 37, 300
        inputs = given(rows, poisoned)
        alone = self.sweep(inputs, client=None)
        with mock.patch.object(_cluster, "on_worker", poison.ends_the_worker), \
                mock.patch.object(_cluster, "_SMALLEST", 15):  # fmt: skip
            table = self.sweep(inputs)
        self.check_but(poisoned, table, alone, "^the calculation ended its worker, and so each other one")
        cluster.until(lambda: self.cluster.is_whole(2), "the nannies start other workers")

    def test_a_worker_that_joins(self):
        rows, joined = 2000, []
        inputs = given(rows)

        def join(done, of):
            if not joined:
                joined.append(self.cluster.add())
                self.assertEqual(len(self.cluster.workers()), 3)

        with mock.patch.object(_cluster, "_SMALLEST", 100):
            table = self.sweep(inputs, progress=join)
        self.cluster.remove(joined[0])
        self.check_but(None, table, self.sweep(inputs, client=None), "")

    def test_nothing_to_wait_for(self):
        empty = cluster.Cluster(self.enterContext(tempfile.TemporaryDirectory()), 0)
        self.addCleanup(empty.close)
        with mock.patch.object(_cluster, "_WITHOUT_WORKERS", 1.0), \
                self.assertRaisesRegex(RuntimeError, "the cluster has had no worker for 1 seconds"):  # fmt: skip
            self.sweep({"flange[0].t": [1.0]}, client=empty.client)
        end = threading.Timer(1.0, empty.scheduler.kill)
        end.start()
        with self.assertRaisesRegex(RuntimeError, "the scheduler has ended"):
            self.sweep({"flange[0].t": [1.0]}, client=empty.client)
        end.join()

    def test_to_a_file_and_an_early_end(self):
        inputs = given(1500)
        table = self.sweep(inputs, progress=lambda done, of: False)
        made = table.rows - table["status"].count("not made")
        self.assertTrue(0 < made < table.rows, made)
        out = os.path.join(self.enterContext(tempfile.TemporaryDirectory()), "swept.csv")
        written = []
        for client in (None, self.client):
            tarvane.sweep_to_file(self.base, inputs, RESULTS, out, block=400, client=client)
            with open(out, encoding="utf-8") as file:
                written.append(file.read())
        self.assertEqual(written[0], written[1])
        self.assertEqual(written[0].count("\n"), 1501)

    def test_one_row_and_none(self):
        self.assertEqual(self.sweep({"flange[0].t": 1.0})[MAWP], self.sweep({"flange[0].t": 1.0}, client=None)[MAWP])
        self.assertEqual(len(self.sweep({"flange[0].t": []})[MAWP]), 0)

    def test_what_is_refused(self):
        with self.assertRaisesRegex(tarvane.InputError, "the nearest is t"):
            self.sweep({"flange[0].tt": [1.0]})
        with self.assertRaisesRegex(tarvane.InputError, "one of the two is expected"):
            self.sweep({"flange[0].t": [1.0]}, processes=2)
        with self.assertRaisesRegex(TypeError, "a Client of dask.distributed is expected, not 'tcp:"):
            self.sweep({"flange[0].t": [1.0]}, client="tcp://127.0.0.1:8786")
        for threads, reason in ((2, "has 2 threads, but the engine calculates one row"), (1, "is in this process")):
            here = LocalCluster(n_workers=1, threads_per_worker=threads, processes=False, dashboard_address=":0")
            with here, Client(here) as client, self.assertRaisesRegex(ValueError, reason):
                self.sweep({"flange[0].t": [1.0]}, client=client)

    def test_another_library_or_data_at_a_worker(self):
        origin = _cluster._origin
        for change, reason in (
            ({"version": "0.1"}, r"has version \d.*, here it is 0\.1"),
            ({"data": [("MATFILE1.BIN", "00")]}, "has other data files: .*MATFILE1.BIN"),
            ({"numpy": False}, "has numpy, here there is none"),
        ):
            changed = lambda *of, change=change: _cluster.replace(origin(*of), **change)  # noqa: E731
            with mock.patch.object(_cluster, "_origin", changed), self.assertRaisesRegex(RuntimeError, reason):
                self.sweep({"flange[0].t": [1.0, 1.1]})


if __name__ == "__main__":
    faulthandler.dump_traceback_later(400, exit=True)  # all that is waited for has an end before
    unittest.main()
