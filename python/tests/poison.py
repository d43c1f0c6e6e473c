"""Rows that end what calculates them, for workers of a cluster: in place of tarvane._cluster.on_worker."""

import os
import signal
import time
from unittest import mock

import tarvane._cluster
import tarvane._processes

POISON = 0.98765
on_worker = tarvane._cluster.on_worker


def _is_in(columns):
    return any(POISON in column for column in columns if not isinstance(column, float))


def ends_the_engine(origin, task, columns, rows):
    ask = tarvane._processes._Process._ask

    def ask_or_die(process, question):
        if len(question) == 2 and _is_in(question[0]):
            process._process.kill()
        return ask(process, question)

    with mock.patch.object(tarvane._processes._Process, "_ask", ask_or_die):
        time.sleep(0.05)  # a block takes as long that the middle of the sweep can be met
        return on_worker(origin, task, columns, rows)


def ends_the_worker(origin, task, columns, rows):
    if _is_in(columns):
        os.kill(os.getpid(), signal.SIGKILL)
    return on_worker(origin, task, columns, rows)
