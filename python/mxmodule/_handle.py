"""Handles: pointers of the C interface that are freed with the last object that uses them."""

from __future__ import annotations

import os
from typing import Any

from ._errors import WrongType, wrong_type


class Pointer(int):
    """A pointer that a function of the C interface returned.

    Only these are used as pointers: ctypes would take any number, and the address of any text.
    """

    __slots__ = ()


def not_from_library(found: object) -> WrongType:
    """Returns the exception that a caller made an object directly, of `found`."""
    hint = (
        "use what returns it, such as Module.load, Module.from_bytes, Catalogue.open, "
        "Station.load, Station.plan or Plan.connect"
    )
    return wrong_type("an object of the library", found, "what the library made", hint=hint)


class Handle:
    """A pointer of the C interface, and its owner.

    An object that needs the pointer keeps its handle. A function that is called with a handle keeps
    it until it returns, so that closing an object in another thread frees nothing that is in use.
    """

    __slots__ = ("_as_parameter_", "_free", "_process", "__weakref__")

    def __init__(self, pointer: int, free: Any, *, of_one_process: bool = False) -> None:
        """Owns `pointer`, which `call` returned; `free` frees it. Raises `WrongType` for another.

        `of_one_process`: what it leads to belongs to the process that opened it, like a
        connection; a child does not free it after a fork."""
        self._free: Any = None
        if not isinstance(pointer, Pointer):
            raise not_from_library(pointer)
        self._as_parameter_: Pointer | None = pointer
        self._free = free
        self._process = os.getpid() if of_one_process else 0

    def is_of_this_process(self) -> bool:
        """Returns whether this process may use it."""
        return self._process in (0, os.getpid())

    def is_freed(self) -> bool:
        """Returns whether its pointer was freed."""
        return self._as_parameter_ is None

    # `getpid` is a default: at the end of the interpreter modules are emptied. Of a cycle of
    # objects the garbage collector calls all finalisers, in any order: one that is called later
    # may use the handle, and finds a null pointer.
    def __del__(self, getpid: Any = os.getpid) -> None:
        if self._free is not None and self._process in (0, getpid()):
            pointer, self._as_parameter_ = self._as_parameter_, None
            self._free(pointer)

    def __copy__(self) -> Handle:
        return self

    def __deepcopy__(self, _: Any) -> Handle:
        return self

    def __reduce__(self) -> Any:
        text = "Objects of libmxmodule cannot be pickled: load the file again where it is needed"
        raise TypeError(text)
