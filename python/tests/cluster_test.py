"""Sweeps on two worker processes of Dask. The number of rows is that of the variable TARVANE_CLUSTER_ROWS."""

import math
import os
import signal
import struct
import sys
import tempfile
import unittest
import warnings
from unittest import mock

import tarvane
from tarvane import _cluster

try:
    import numpy
    from distributed import Client, LocalCluster
except ImportError as error:
    print(f"sweeps on a cluster: not run: {error}", file=sys.stderr)
    sys.exit(77)
import poison
from test_sweep import FLANGE, GOVERNING, MAWP, RATIO

ROWS = int(os.environ.get("TARVANE_CLUSTER_ROWS", "5000"))
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


def start(**options):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # the port of its page is taken, a socket is left to the collector
        cluster = LocalCluster(**{"threads_per_worker": 1, "dashboard_address": None, "host": "127.0.0.1", **options})
    return cluster, Client(cluster)


class Sweeps(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cluster, cls.client = start(n_workers=2)
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
                pids = self.client.run(os.getpid)
                ended.append(sorted(pids.values())[0])
                os.kill(ended[0], signal.SIGKILL)

        with mock.patch.object(_cluster, "on_worker", poison.ends_the_engine), \
                mock.patch.object(_cluster, "_SMALLEST", ROWS // BLOCKS), \
                mock.patch.object(_cluster, "_LARGEST", ROWS // BLOCKS):  # fmt: skip
            table = self.sweep(inputs, progress=end_one)
        self.check_but(poisoned, table, alone, ENDED)
        self.assertEqual((len(ended), told[-1], sorted(told)), (1, (ROWS, ROWS), told))
        self.assertLess(told[0][0], ROWS // 4)
        self.client.wait_for_workers(2, timeout=60)
        self.assertNotIn(ended[0], self.client.run(os.getpid).values())

    def test_a_row_that_ends_each_worker(self):
        poisoned, rows = 37, 300
        inputs = given(rows, poisoned)
        alone = self.sweep(inputs, client=None)
        scheduler = self.cluster.scheduler
        with mock.patch.object(_cluster, "on_worker", poison.ends_the_worker), \
                mock.patch.object(_cluster, "_SMALLEST", 30), mock.patch.object(scheduler, "allowed_failures", 1):  # fmt: skip
            table = self.sweep(inputs)
        self.client.wait_for_workers(2, timeout=60)  # a worker that has only begun is not closed well
        self.check_but(poisoned, table, alone, "^the calculation ended its worker, and so each other one")

    def test_a_worker_that_joins(self):
        rows, seen = 2000, []
        inputs = given(rows)

        def join(done, of):
            if not seen:
                self.cluster.scale(3)
                self.client.wait_for_workers(3, timeout=60)
            seen.append(done)

        try:
            with mock.patch.object(_cluster, "_SMALLEST", 100):
                table = self.sweep(inputs, progress=join)
            self.check_but(None, table, self.sweep(inputs, client=None), "")
        finally:
            self.cluster.scale(2)

    def test_to_a_file_and_an_early_end(self):
        inputs = given(1500)
        table = self.sweep(inputs, progress=lambda done, of: False)
        made = table.rows - table["status"].count("not made")
        self.assertTrue(0 < made < table.rows, made)
        out = os.path.join(self.enterContext(tempfile.TemporaryDirectory()), "swept.csv")
        written = [tarvane.sweep_to_file(self.base, inputs, RESULTS, out, block=400, client=client)
                   and open(out, encoding="utf-8").read() for client in (None, self.client)]  # fmt: skip
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
        cluster, client = start(n_workers=1, threads_per_worker=2)
        with cluster, client, self.assertRaisesRegex(ValueError, "has 2 threads, but the engine calculates one row"):
            self.sweep({"flange[0].t": [1.0]}, client=client)
        cluster, client = start(n_workers=1, processes=False, host=None)
        with cluster, client, self.assertRaisesRegex(ValueError, "is in this process"):
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
    passed = unittest.main(exit=False).result.wasSuccessful()
    sys.stderr.flush()
    os._exit(0 if passed else 1)  # closing waits without an end for a worker that was ended; each ends with this process
