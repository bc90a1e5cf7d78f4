"""What is used by one thread at a time and belongs to the process that opened it."""

from __future__ import annotations

import threading
from types import TracebackType
from typing import Any, TypeVar

from ._errors import ClosedError, request_finding
from ._findings import for_terminal
from ._handle import Handle

Self = TypeVar("Self", bound="Connection")


class Connection:
    """An open object: a catalogue, a coupler, a simulated coupler.

    Threads may share it: one call is carried out after the other. After a fork, a child opens its
    own.
    """

    __slots__ = ("_handle", "_lock", "_shown", "__weakref__")

    def __init__(self, pointer: int, free: Any) -> None:
        """Owns what is at `pointer`."""
        self._handle: Handle | None = Handle(pointer, free, of_one_process=True)
        self._lock = threading.Lock()
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

    def __exit__(
        self,
        kind: type[BaseException] | None,
        failure: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<{type(self).__name__} {for_terminal(self._shown)}{', closed' if self.closed else ''}>"
