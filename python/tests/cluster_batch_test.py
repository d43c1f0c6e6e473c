"""Batches on two worker processes of Dask."""

import contextlib
import faulthandler
import os
import shutil
import signal
import sys
import tempfile
import threading
import time
import unittest
from pathlib import Path
from unittest import mock

import tarvane
from tarvane import _batch

try:
    import cluster
except ImportError as error:
    print(f"batches on a cluster: not run: {error}", file=sys.stderr)
    sys.exit(77)
import poison
from test_batch import different_files, flange, is_faulty, write_inputs

COUNT = 200


class Batches(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.inputs = write_inputs(cls.work / "in", COUNT)
        cls.whole = cls.work / "whole"
        cls.local = tarvane.batch(cls.inputs, cls.whole, jobs=2)
        (cls.work / "cluster").mkdir()
        cls.cluster = cluster.Cluster(cls.work / "cluster", 2)
        cls.addClassCleanup(cls.cluster.close)

    def setUp(self):
        self.out = self.work / self._testMethodName

    def batch(self, **options):
        return tarvane.batch(options.pop("paths", self.inputs), self.out, **{"client": self.cluster.client, **options})

    @contextlib.contextmanager
    def after_items(self, count, action):
        """Calls it as so many items are done."""
        def watch():
            end = time.monotonic() + cluster.PATIENCE
            while len(list(self.out.glob("journal/*.json"))) < count and time.monotonic() < end:
                time.sleep(0.02)
            action()

        thread = threading.Thread(target=watch)
        thread.start()
        try:
            yield
        finally:
            thread.join()

    def slow(self):
        return mock.patch.object(_batch, "on_worker", poison.slow_items)

    def test_a_worker_that_is_ended(self):
        before = self.cluster.pids()
        left = []

        def end_one():
            os.kill(before[0], signal.SIGKILL)
            left.append(COUNT - len(list(self.out.glob("journal/*.json"))))

        with self.slow(), self.after_items(COUNT // 4, end_one):
            batch = self.batch()
        self.assertGreater(left[0], 0)
        self.assertEqual([row["item"] for row in batch.rows if row["status"] != "ok"],
                         sorted(f"flange {n}" for n in range(COUNT) if is_faulty(n)))  # fmt: skip
        self.assertEqual((batch.exit, batch.summary), (self.local.exit, self.local.summary))
        self.assertEqual(different_files(self.out, self.whole), [])
        cluster.until(lambda: self.cluster.is_whole(2, before[0]), "the nanny starts another worker")

    def test_a_batch_that_is_interrupted(self):
        with self.slow(), self.after_items(COUNT // 4, lambda: os.kill(os.getpid(), signal.SIGINT)), \
                self.assertRaises(KeyboardInterrupt):  # fmt: skip
            self.batch()
        self.assertLess(len(list(self.out.glob("results/*.json"))), COUNT - COUNT // 4)
        self.assertTrue((self.out / "summary.csv").exists())
        self.batch(resume=True, client=None)
        self.assertEqual(different_files(self.out, self.whole), [])

    def test_items_that_end_their_processes(self):
        poisoned = self.inputs / "flange 20.toml"
        for name, reason in (
            ("ends_the_worker_of_an_item", "the calculation ended its worker, and so each other one"),
            ("ends_the_program_of_an_item", "2 processes that were to calculate it ended"),
        ):
            with self.subTest(name), mock.patch.object(_batch, "on_worker", getattr(poison, name)):
                batch = self.batch(paths=sorted(self.inputs.glob("flange 2?.toml")))
                self.assertEqual(batch.exit, 3)
                rows = {row["item"]: row for row in batch.rows}
                self.assertEqual(len(rows), 10)
                died = rows.pop(poisoned.stem)
                self.assertEqual((died["status"], died["reason"]), ("died", reason))
                self.assertEqual({row["status"] for row in rows.values()}, {"ok"})
            shutil.rmtree(self.out)
        cluster.until(lambda: self.cluster.is_whole(2), "the nannies start other workers")

    def test_other_data_files_at_a_worker(self):
        data = self.work / "other data"
        data.mkdir()
        for file in Path(os.environ["TARVANE_PROGRAM"]).parent.iterdir():
            if file.suffix in (".TXT", ".txt", ".BIN"):
                shutil.copy(file, data)
        with open(data / "BOLTDATA.TXT", "a", encoding="utf-8") as file:
            file.write("\n")
        with mock.patch.dict(os.environ, TARVANE_DATA=str(data)), \
                self.assertRaisesRegex(RuntimeError, "the worker .*: its program .* or its data files .* are others"):  # fmt: skip
            self.batch()
        self.batch(resume=True)
        self.assertEqual(different_files(self.out, self.whole), [])

    def test_what_is_refused(self):
        with self.assertRaisesRegex(TypeError, "a Client of dask.distributed is expected, not 'tcp:"):
            self.batch(client="tcp://127.0.0.1:8786")
        with self.assertRaisesRegex(RuntimeError, "nowhere: there is no such file or folder"):
            self.batch(paths=self.work / "nowhere")

    def test_an_input_that_only_the_client_has(self):
        path = self.work / "alone.toml"
        path.write_text(flange(0, P=100, t=1.5), encoding="utf-8")
        on_worker = mock.patch.object(_batch, "on_worker", poison.without_the_input)
        with on_worker:
            batch = self.batch(paths=path)
        self.assertEqual([row["status"] for row in batch.rows], ["ok"])


if __name__ == "__main__":
    faulthandler.dump_traceback_later(400, exit=True)  # all that is waited for has an end before
    unittest.main()
