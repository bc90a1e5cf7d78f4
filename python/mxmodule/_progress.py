"""The progress of long operations, and what ends them."""

from __future__ import annotations

import signal
import threading
from typing import Any, Callable

from . import _calls
from ._mxmodule import NOTICE, PROGRESS, Observer


class Progress:
    """An observer of the C interface, used in a `with` around the call.

    An exception must not pass through the library: what the caller's function raises ends the
    operation, and is raised at the end of the `with`. The same is done with Ctrl-C. Python carries
    out handlers of signals before the first line of a function that C calls, where nothing can
    catch what they raise; so meanwhile another handler keeps it.
    """

    def __init__(self, told: Callable[[int, int], None] | None) -> None:
        """`told` is called with what is done and all that is to do."""
        self._told = told
        self._failure: BaseException | None = None
        self._handler: Any = None
        self.observer = Observer(None, NOTICE(0), PROGRESS(self._tell))

    def __enter__(self) -> Progress:
        # Python has handlers of signals in the main thread alone.
        if threading.current_thread() is threading.main_thread():
            handler = signal.getsignal(signal.SIGINT)
            if callable(handler):
                signal.signal(signal.SIGINT, self._interrupted)
                self._handler = handler
        return self

    def __exit__(self, *_: object) -> None:
        if self._handler is not None:
            signal.signal(signal.SIGINT, self._handler)
        if self._failure is not None:
            raise self._failure from None

    def _interrupted(self, number: int, frame: Any) -> None:
        try:
            self._handler(number, frame)
        except BaseException as failure:
            self._failure = failure

    def _tell(self, _: int | None, done: int, total: int) -> int:
        try:
            if self._told is not None:
                self._told(done, total)
        except BaseException as failure:
            self._failure = failure
        return 0 if self._failure is None and not _calls.is_ending() else 1
