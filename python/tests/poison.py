"""Rows and files that end what calculates them, for workers of a cluster: in place of `on_worker` of tarvane._cluster
and tarvane._batch."""

import os
import signal
import time
from unittest import mock

import tarvane._batch
import tarvane._cluster
import tarvane._processes

POISON = 0.98765
FILE = b"flange 20.toml"
on_worker = tarvane._cluster.on_worker
items_on_worker = tarvane._batch.on_worker


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


def ends_the_worker_of_an_item(ways, inputs):
    if any(file.endswith(FILE) for file, _ in inputs):
        os.kill(os.getpid(), signal.SIGKILL)
    return items_on_worker(ways, inputs)


def ends_the_program_of_an_item(ways, inputs):
    calculate = tarvane._batch._Relay.calculate

    def calculate_or_die(relay, file, text):
        if file.endswith(FILE):
            relay._process.kill()
            relay._process.wait()
        return calculate(relay, file, text)

    with mock.patch.object(tarvane._batch._Relay, "calculate", calculate_or_die):
        return items_on_worker(ways, inputs)


def slow_items(ways, inputs):
    time.sleep(0.02)  # that the middle of the batch can be met
    return items_on_worker(ways, inputs)


def without_the_input(ways, inputs):
    """What another machine has of it: nothing but what was sent."""
    return items_on_worker(ways, [(b"/nowhere/alone.toml", text) for _, text in inputs])
