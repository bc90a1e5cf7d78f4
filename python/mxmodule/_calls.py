"""Threads that are inside the libraries, and the end of the interpreter.

The process ends while daemon threads run, and what the libraries need is destroyed under them. So
at the end of the interpreter calls of other threads end first, and new ones do not begin.
"""

from __future__ import annotations

import atexit
import os
import threading
import time
from threading import get_ident

# How many calls each thread is inside: a caller's function may call the libraries again. Only the
# thread itself changes its number.
_depths: dict[int, int] = {}

# The thread that ends the interpreter; 0: it runs.
_last = 0


def begin() -> int:
    """Counts a call that begins, and returns the thread for `end`. At the end of the interpreter it
    does not return, except in the thread that ends it."""
    thread = get_ident()
    _depths[thread] = _depths.get(thread, 0) + 1
    if _last not in (0, thread):
        end(thread)
        threading.Event().wait()
    return thread


def end(thread: int) -> None:
    """Counts that a call ended."""
    depth = _depths[thread] - 1
    if depth:
        _depths[thread] = depth
    else:
        del _depths[thread]


def is_ending() -> bool:
    """Whether the interpreter ends: long operations should."""
    return _last != 0


def _end_interpreter() -> None:
    global _last
    _last = get_ident()
    while any(thread != _last for thread in list(_depths)):
        time.sleep(0.001)


def _forget_other_threads() -> None:
    # A child has only the thread that forked.
    for thread in list(_depths):
        if thread != get_ident():
            del _depths[thread]


atexit.register(_end_interpreter)
os.register_at_fork(after_in_child=_forget_other_threads)
