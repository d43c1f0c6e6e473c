"""A scheduler and workers of Dask, each a process of its own. No wait is without an end."""

import contextlib
import os
import signal
import subprocess
import sys
import time
import warnings
from pathlib import Path

from distributed import Client

PATIENCE, PAUSE = 60.0, 0.1  # seconds


def until(true, what):
    end = time.monotonic() + PATIENCE
    while not true():
        if time.monotonic() > end:
            raise TimeoutError(f"not within {PATIENCE:.0f} seconds: {what}")
        time.sleep(PAUSE)


class Cluster:
    """Of one scheduler; `client` is for it. What the processes say is in files of the folder."""

    def __init__(self, folder, workers, allowed_failures=1, **variables):
        self.folder = Path(folder)
        paths = os.pathsep.join(filter(None, (str(Path(__file__).parent), os.environ.get("PYTHONPATH"))))
        # A nanny forks its worker, and each that follows one that has ended, from a process that has imported all.
        self.variables = {**os.environ, "PYTHONPATH": paths, **variables,
                          "DASK_DISTRIBUTED__WORKER__MULTIPROCESSING_METHOD": "forkserver",
                          "DASK_DISTRIBUTED__SCHEDULER__ALLOWED_FAILURES": str(allowed_failures)}  # fmt: skip
        self.processes = []
        self.client = None
        try:
            self.scheduler = self._start("scheduler", "--port", "0", "--scheduler-file", str(self.file))
            until(lambda: self.file.exists() or self.scheduler.poll() is not None, "the scheduler begins")
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")  # a socket is left to the collector
                self.client = Client(scheduler_file=str(self.file), timeout=PATIENCE)
            if workers > 0:
                self.add(workers)
        except BaseException:
            self.close()
            raise

    @property
    def file(self):
        return self.folder / "scheduler.json"

    def _start(self, what, *options):
        log = self.folder / f"{what} {len(self.processes)}.log"
        with open(log, "w", encoding="utf-8") as out:
            process = subprocess.Popen(
                [sys.executable, "-m", f"distributed.cli.dask_{what}", "--host", "127.0.0.1", "--no-dashboard", *options],
                stdin=subprocess.DEVNULL, stdout=out, stderr=out, env=self.variables, start_new_session=True,
            )  # fmt: skip
        self.processes.append(process)
        return process

    def workers(self):
        return self.client.scheduler_info()["workers"]

    def add(self, count=1):
        """Each is a process with a nanny, the nannies are of one; returns when they have come."""
        wanted = len(self.workers()) + count
        process = self._start("worker", "--scheduler-file", str(self.file), "--nworkers", str(count), "--nthreads", "1",
                              "--memory-limit", "0", "--local-directory", str(self.folder))  # fmt: skip
        until(lambda: len(self.workers()) >= wanted or process.poll() is not None, "a worker comes")
        if process.poll() is not None:
            raise RuntimeError(f"a worker ended with {process.returncode}")
        return process

    def remove(self, worker):
        before = len(self.workers())
        _end(worker)
        self.processes.remove(worker)
        until(lambda: len(self.workers()) < before, "a worker has gone")

    def pids(self):
        return sorted(self.client.run(os.getpid).values())

    def is_whole(self, workers, without=None):
        """As many answer, and that process is none of them. One that has just ended may still be known."""
        try:
            pids = self.pids()
        except OSError:
            return False
        return len(pids) == workers and without not in pids

    def close(self):
        if self.client is not None:
            with contextlib.suppress(TimeoutError):  # the processes end all the same
                self.client.close(timeout=20)
        for process in reversed(self.processes):
            _end(process)


def _end(process):
    """With all that it has started."""
    process.terminate()
    try:
        process.wait(10)
    except subprocess.TimeoutExpired:
        pass
    try:
        os.killpg(process.pid, signal.SIGKILL)  # its own session
    except ProcessLookupError:
        pass
    process.wait(10)
