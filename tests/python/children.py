"""Processes forked by tests."""

from __future__ import annotations

import os
import signal
import traceback
from typing import Callable

#: A child that hangs is ended by the system after this time.
SECONDS = 30


def exit_code_of_child(work: Callable[[], object]) -> int:
    """Returns 0 if `work` returns in a forked process, 1 if it raises, else the number of the
    signal that ended the process, negative."""
    child = os.fork()
    if child == 0:
        _run(work)
    _, status = os.waitpid(child, 0)
    return os.waitstatus_to_exitcode(status)


def _run(work: Callable[[], object]) -> None:
    code = 1
    try:
        signal.alarm(SECONDS)
        work()
        code = 0
    except BaseException:
        traceback.print_exc()
    finally:
        os._exit(code)
