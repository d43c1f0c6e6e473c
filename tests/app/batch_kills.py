"""A batch that is killed again and again and resumed gives what one undisturbed run gives.

    batch_kills.py PROGRAM [--items 200] [--kills 10] [--jobs 2] [--seed 1] [--folder DIR]

Writes the given number of flange files, some of which fail and some of which are faulty; runs a batch over them
without a disturbance, then another that gets SIGKILL at random moments, half of them as it starts, and is resumed after
each. Both must have the same summary and the same files. Items drawn at random are compared with `tarvane run`. At last a
faulty file is repaired, and a resumed batch must be as one of the repaired files. Prints what it did and took.
"""

import argparse
import csv
import json
import random
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

FLANGE = """[[flange]]
description = "flange {n}"
type = "weld neck"
P = {P}
T = 300
B = 12.0
A = 19.0
t = {t}
g0 = 0.375
g1 = 1.19
h = 3.25
Sfo = 20000
Sfa = 20000
bolting = "TEMA"
C = 17.0
n = 12
a = 0.875
Sb = 25000
Sa = 25000
Fod = 15.0
Fid = 12.0
Go = 14.75
Gi = 14.0
m = 3
y = 10000
facing = "1a"
"""
FAULTY_EVERY, PER_FOLDER, SAMPLE = 40, 100, 10


def flange(n):
    """The text of the n-th file. Thin ones fail, every 40th has no number as its pressure."""
    pressure = '"ten"' if n % FAULTY_EVERY == 7 else 100 + n % 97
    return FLANGE.format(n=n, P=pressure, t=round(0.9 + (n % 61) * 0.01, 2))


def write_inputs(folder, count):
    paths = []
    for n in range(count):
        path = folder / f"part {n // PER_FOLDER}" / f"flange {n}.toml"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(flange(n), encoding="utf-8")
        paths.append(path)
    return paths


class Check:
    def __init__(self, arguments, work):
        self.program, self.jobs = arguments.program, str(arguments.jobs)
        self.inputs = work / "inputs"
        self.random = random.Random(arguments.seed)

    def command(self, out, *more):
        return [self.program, "batch", str(self.inputs), "--out", str(out), "--jobs", self.jobs, "--quiet", *more]

    def run(self, out, *more):
        done = subprocess.run(self.command(out, *more), capture_output=True, text=True, check=False)
        assert done.returncode == 2, f"faulty files give status 2, not {done.returncode}: {done.stderr}"
        assert not done.stdout and not done.stderr, done.stdout + done.stderr

    def kill(self, out, more_done):
        """Ends a batch at once: in its first moments, or after so many more items. True: it was still running."""
        batch = subprocess.Popen(self.command(out, "--resume"), stderr=subprocess.PIPE, text=True)
        if more_done:
            while batch.poll() is None and len(list((out / "journal").glob("*.json"))) < more_done:
                time.sleep(0.002)
            time.sleep(self.random.uniform(0.0, 0.005))
        else:
            time.sleep(self.random.uniform(0.0, 0.03))
        batch.kill()
        _, errors = batch.communicate()
        assert not errors, errors
        return batch.returncode == -9


def files_of(out):
    return {path.relative_to(out).as_posix(): path.read_bytes() for path in (out / "results").rglob("*") if path.is_file()}


def summary_of(out):
    return (out / "summary.csv").read_bytes(), (out / "summary.json").read_bytes()


def assert_same(a, b):
    assert summary_of(a) == summary_of(b), "the summaries differ"
    first, second = files_of(a), files_of(b)
    assert first.keys() == second.keys(), sorted(first.keys() ^ second.keys())[:5]
    different = [name for name in first if first[name] != second[name]]
    assert not different, different[:5]


def rows_of(out):
    with (out / "summary.csv").open(newline="", encoding="utf-8") as file:
        return {row["item"]: row for row in csv.DictReader(file)}


def assert_right(check, out, paths):
    """Every file has its row, and items drawn at random are as `tarvane run` has them."""
    rows = rows_of(out)
    assert len(rows) == len(paths), f"{len(rows)} rows of {len(paths)} files"
    faulty = [n for n in range(len(paths)) if n % FAULTY_EVERY == 7]
    assert sum(row["status"] == "fault" for row in rows.values()) == len(faulty)
    total = json.loads((out / "summary.json").read_text(encoding="utf-8"))
    assert total["items"] == len(paths) and total["missing"] == 0 and total["not_calculated"] == len(faulty)
    assert total["pass"] > 0 and total["fail"] > 0
    assert total["pass"] + total["fail"] + total["not_made"] + total["not_calculated"] == len(paths)
    for path in [*check.random.sample(paths, SAMPLE), paths[faulty[0]]]:
        name = path.relative_to(check.inputs).with_suffix("").as_posix()
        run = subprocess.run([check.program, "run", str(path)], capture_output=True, check=False)
        row = rows[name]
        assert int(row["exit"]) == run.returncode, (name, row)
        text = out / "results" / f"{name}.txt"
        assert (row["status"] == "ok") == text.exists(), name
        if row["status"] == "ok":
            assert text.read_bytes() == run.stdout, name
            result = json.loads((out / "results" / f"{name}.json").read_text(encoding="utf-8"))
            assert row["verdict"] == result["verdict"] and row["says"] == result["says"], name
            ratio = next(c["ratio"] for c in result["flange"][0]["checks"] if c["id"] == row["check"])
            assert float(row["ratio"]) == ratio, name
        else:
            assert "ten" in row["reason"], row


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--items", type=int, default=200)
    parser.add_argument("--kills", type=int, default=10)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--folder")
    arguments = parser.parse_args()
    work = Path(tempfile.mkdtemp(prefix="tarvane_batch_", dir=arguments.folder))
    try:
        check = Check(arguments, work)
        paths = write_inputs(check.inputs, arguments.items)
        whole, killed, repaired = work / "whole", work / "killed", work / "repaired"

        start = time.monotonic()
        check.run(whole)
        seconds = time.monotonic() - start
        print(f"{len(paths)} files in {seconds:.1f} s, {len(paths) / seconds:.0f}/s")
        assert_right(check, whole, paths)

        kills = 0
        for k in range(arguments.kills):
            more = 0 if k % 2 else check.random.randint(1, max(1, len(paths) * 2 // (arguments.kills + 1)))
            kills += check.kill(killed, more)
        assert kills == arguments.kills, f"{kills} of {arguments.kills} kills found a batch that ran"
        check.run(killed, "--resume")
        print(f"killed {kills} times, resumed")
        assert_same(whole, killed)

        faulty = next(n for n in range(len(paths)) if n % FAULTY_EVERY == 7)
        paths[faulty].write_text(flange(faulty + 1), encoding="utf-8")
        before = files_of(killed)
        start = time.monotonic()
        check.run(killed, "--resume")
        print(f"one file repaired, resumed in {time.monotonic() - start:.1f} s")
        after = files_of(killed)
        fresh = {name for name in after if after[name] != before.get(name)}
        assert len(fresh) == 2 and all(f"flange {faulty}." in name for name in fresh), fresh
        check.run(repaired)
        assert_same(repaired, killed)
    finally:
        shutil.rmtree(work)
    return 0


if __name__ == "__main__":
    sys.exit(main())
