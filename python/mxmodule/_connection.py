"""What is used by one thread at a time and belongs to the process that opened it."""

from __future__ import annotations

import os
import threading
from typing import Any, TypeVar

from ._errors import ClosedError, RequestError, request_finding
from ._findings import for_terminal
from ._handle import Handle

Self = TypeVar("Self", bound="Connection")


class _OneAtATime:
    """Lets one thread at a time in.

    A child of the process does not wait: what was locked during the fork stays so, and there it
    can use nothing of the connection.
    """

    __slots__ = ("_lock", "_process", "_user")

    def __init__(self) -> None:
        self._lock = threading.Lock()
        self._process = os.getpid()
        self._user = 0

    def __enter__(self) -> None:
        if self._process != os.getpid():
            return
        # Only the thread itself can have stored its own number.
        if self._user == threading.get_ident():
            text = "Found a use by a function that a call of the same object calls, expected none"
            raise RequestError([request_finding(text)])
        self._lock.acquire()
        self._user = threading.get_ident()

    def __exit__(self, *_: object) -> None:
        if self._process == os.getpid():
            self._user = 0
            self._lock.release()


class Connection:
    """An open object: a catalogue, a coupler, a simulated coupler.

    Threads may share it: one call is carried out after the other. After a fork, a child opens its
    own.
    """

    __slots__ = ("_handle", "_lock", "_shown", "__weakref__")

    def __init__(self, pointer: int, free: Any) -> None:
        """Owns what is at `pointer`."""
        self._handle: Handle | None = Handle(pointer, free, of_one_process=True)
        self._lock = _OneAtATime()
        self._shown = ""  # for messages

    @property
    def closed(self) -> bool:
        """Whether it was closed."""
        return self._handle is None

    def close(self) -> None:
        """Closes it. A call of another thread ends first; later ones raise `ClosedError`."""
        self._handle = None

    def _open_handle(self) -> Handle:
        """Returns the handle. Raises `ClosedError`."""
        handle = self._handle
        if handle is None:
            text = f"The {type(self).__name__.lower()} was closed"
            raise ClosedError([request_finding(text, place=self._shown)])
        if not handle.is_of_this_process():
            text = f"The {type(self).__name__.lower()} was opened by the process that forked this"
            hint = "open it again in this process"
            raise ClosedError([request_finding(text, place=self._shown, hint=hint)])
        return handle

    def __enter__(self: Self) -> Self:
        self._open_handle()
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def __repr__(self) -> str:
        state = ", closed" if self.closed else ""
        return f"<{type(self).__name__} {for_terminal(self._shown)}{state}>"
