"""A process of a sweep: takes blocks of rows from its input, gives what was found for them to its output."""

from __future__ import annotations

import contextlib
import os
import pickle
import signal
import sys
from typing import BinaryIO

from ._block import calculated
from ._library import Handle


def serve(source: BinaryIO, target: BinaryIO) -> None:
    library, data_folder, task = pickle.load(source)
    try:
        handle = Handle(library, data_folder)
    except OSError as error:
        pickle.dump(str(error), target)
        target.flush()
        return
    pickle.dump(None, target)
    target.flush()
    while True:
        try:
            columns, rows = pickle.load(source)
        except EOFError:
            return
        pickle.dump(calculated(handle, task, columns, rows), target)
        target.flush()


if __name__ == "__main__":
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # the parent hears it
    answers = os.fdopen(os.dup(1), "wb")
    os.dup2(2, 1)  # what else is printed
    with contextlib.suppress(BrokenPipeError):  # nobody waits for it any more
        serve(sys.stdin.buffer, answers)
