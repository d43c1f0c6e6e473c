"""Batches by the program."""

import json
import os
import signal
import tempfile
import threading
import time
import unittest
from pathlib import Path
from unittest import mock

import tarvane
from test_sweep import FLANGE

FAULTY_EVERY = 40


def is_faulty(n):
    return n % FAULTY_EVERY == 7


def flange(n, **keys):
    """The text of a file."""
    keys = {**FLANGE, "description": f"flange {n}", **keys}
    return "[[flange]]\n" + "".join(f"{key} = {json.dumps(value)}\n" for key, value in keys.items())


def write_inputs(folder, count):
    """Thin flanges fail, the 7th and each 40th after it has no number as its pressure."""
    folder.mkdir()
    for n in range(count):
        text = flange(n, P="ten" if is_faulty(n) else 100 + n, t=round(0.9 + (n % 61) * 0.01, 2))
        (folder / f"flange {n}.toml").write_text(text, encoding="utf-8")
    return folder


def files_of(out):
    """What a batch has written, without what differs from run to run: its lock, and in its journal the times."""
    found = {}
    for path in (path for path in out.rglob("*") if path.is_file() and path.name != "lock"):
        data = path.read_bytes()
        if path.name == "journal.jsonl":
            data = [line.split(b'"seconds":')[0] for line in data.splitlines()]
        found[path.relative_to(out).as_posix()] = data
    return found


def different_files(one, other):
    first, second = files_of(one), files_of(other)
    assert {"summary.csv", "summary.json", "journal.jsonl", "results/flange 0.txt"} <= first.keys(), sorted(first)
    return sorted(name for name in first.keys() | second.keys() if first.get(name) != second.get(name))


@unittest.skipUnless(os.environ.get("TARVANE_PROGRAM"), "not run: batches: TARVANE_PROGRAM names no program")
class Batches(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.work = Path(folder.name)

    def test_is_the_command(self):
        given, out = write_inputs(self.work / "in", 9), self.work / "out"
        batch = tarvane.batch(given, out, jobs=2)
        self.assertEqual((batch.exit, batch.folder, len(batch.rows)), (2, str(out), 9))
        self.assertEqual([row["item"] for row in batch.rows if row["status"] != "ok"], ["flange 7"])
        self.assertIn("ten", next(row["reason"] for row in batch.rows if row["item"] == "flange 7"))
        self.assertEqual(batch.summary["not_calculated"], 1)
        self.assertTrue((out / "results" / "flange 0.json").exists())
        with self.assertRaisesRegex(RuntimeError, "has a batch already"):
            tarvane.batch(given, out)
        (given / "flange 7.toml").write_text(flange(7, P=107, t=1.5), encoding="utf-8")
        again = tarvane.batch([str(given / "flange 7.toml")], out, resume=True)
        self.assertEqual([row["status"] for row in again.rows], ["ok"] * 9)

    def test_options(self):
        given = write_inputs(self.work / "in", 2)
        strict = tarvane.batch(given, self.work / "strict", strict=True)
        self.assertEqual({row["status"] for row in strict.rows}, {"fault"})
        page = tarvane.batch([given / "flange 0.toml"], self.work / "page", html=True)
        self.assertTrue((self.work / "page" / "results" / "flange 0.html").exists(), page)
        with self.assertRaisesRegex(RuntimeError, "nowhere"):
            tarvane.batch(given, self.work / "data", data_folder=self.work / "nowhere")

    def test_what_is_refused(self):
        for paths in ([], [self.work / "nowhere"], self.work / "--nowhere"):
            with self.assertRaises(RuntimeError) as raised:
                tarvane.batch(paths, self.work / "out")
            self.assertNotEqual(str(raised.exception), "")
        with self.assertRaisesRegex(ValueError, "one of the two"):
            tarvane.batch(self.work, self.work / "out", jobs=1, client="a client")
        with self.assertRaisesRegex(RuntimeError, "--jobs"):
            tarvane.batch(self.work, self.work / "out", jobs=0)
        with mock.patch.dict(os.environ, TARVANE_PROGRAM=str(self.work / "none")), \
                self.assertRaisesRegex(FileNotFoundError, "none'.* a wheel does not have it"):  # fmt: skip
            tarvane.batch(self.work, self.work / "out")

    def test_an_interrupt(self):
        count = 150
        given, out = write_inputs(self.work / "in", count), self.work / "out"

        def interrupt():
            end = time.monotonic() + 60
            while not list((out / "journal").glob("*.json")) and time.monotonic() < end:
                time.sleep(0.005)
            os.kill(os.getpid(), signal.SIGINT)

        thread = threading.Thread(target=interrupt)
        thread.start()
        with self.assertRaises(KeyboardInterrupt):
            tarvane.batch(given, out, jobs=1)
        thread.join()
        self.assertTrue((out / "summary.json").exists())
        self.assertLess(len(list(out.glob("results/*.json"))), count - 10)
        tarvane.batch(given, out, resume=True)
        tarvane.batch(given, self.work / "whole")
        self.assertEqual(different_files(out, self.work / "whole"), [])


if __name__ == "__main__":
    unittest.main()
