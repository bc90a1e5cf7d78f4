"""The shared libraries: where they are, and how their functions are called."""

from __future__ import annotations

import ctypes
import json
import os
from typing import Any, Mapping, Sequence, Tuple

from . import _calls
from ._errors import (
    ClosedError,
    Defect,
    Error,
    InputError,
    MissingLibrary,
    OutputError,
    RequestError,
    request_finding,
)
from ._findings import Finding, findings_of
from ._handle import Handle, Pointer

# A wheel contains the libraries; without this folder they are the system's.
FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "_libraries")

HANDLE = ctypes.c_void_p
HANDLES = ctypes.POINTER(ctypes.c_void_p)
TEXT = ctypes.c_char_p
BYTES = ctypes.c_char_p
INT = ctypes.c_int
INTS = ctypes.POINTER(ctypes.c_int)
CHAR = ctypes.c_char
SIZE = ctypes.c_size_t
UINT32 = ctypes.c_uint32
SIZES = ctypes.POINTER(ctypes.c_size_t)
TEXTS = ctypes.POINTER(ctypes.c_char_p)
NOTHING = None

# Of a function: what it returns, and what it takes before the error.
Signature = Tuple[Any, Sequence[Any]]

# As mxmodule_code. A misuse is a defect of this package.
_REQUEST, _INPUT, _OUTPUT, _NO_MEMORY = 1, 2, 3, 4
_EXCEPTIONS: Mapping[int, type[Error]] = {
    _REQUEST: RequestError,
    _INPUT: InputError,
    _OUTPUT: OutputError,
}


def _missing(name: str, reason: str) -> MissingLibrary:
    hint = "install the wheel of mxmodule again"
    if not os.path.isdir(FOLDER):
        hint = "install the package python3-mxmodule, or the wheel of mxmodule, which contains it"
    text = f"The library {name} cannot be loaded: {reason}"
    return MissingLibrary([Finding("error", "input", name, text, hint, (), "")])


def _load(name: str) -> ctypes.CDLL:
    path = name
    if os.path.isdir(FOLDER):
        # In a wheel each has a name that no library of the system has.
        path = os.path.join(FOLDER, name.replace(".so", "-mxwheel.so"))
    try:
        return ctypes.CDLL(path)
    except OSError as failure:
        raise _missing(name, str(failure)) from None


class Library:
    """A loaded library. Functions that can fail raise an `Error`, the others are in `plain`."""

    def __init__(
        self, name: str, failing: Mapping[str, Signature], plain: Mapping[str, Signature]
    ) -> None:
        """Loads the library of the file `name` with the functions of both tables."""
        self._library = _load(name)
        self._name = name
        for function, (result, arguments) in failing.items():
            self._declare(function, result, [*arguments, HANDLE])
        for function, (result, arguments) in plain.items():
            self._declare(function, result, arguments)

    def _declare(self, name: str, result: Any, arguments: Sequence[Any]) -> None:
        try:
            function = getattr(self._library, name)
        except AttributeError:
            raise _missing(self._name, f"it has no {name}: it is of another version") from None
        function.restype = result
        function.argtypes = arguments
        setattr(self, name, function)

    def __getattr__(self, name: str) -> Any:
        # Only for the type checker: `_declare` sets every function.
        raise AttributeError(name)


_ERROR_FUNCTIONS: Mapping[str, Signature] = {
    "mxmodule_error_code": (INT, [HANDLE]),
    "mxmodule_error_findings": (TEXT, [HANDLE]),
    "mxmodule_error_free": (NOTHING, [HANDLE]),
    "mxmodule_bytes_data": (HANDLE, [HANDLE]),
    "mxmodule_bytes_size": (SIZE, [HANDLE]),
    "mxmodule_bytes_free": (NOTHING, [HANDLE]),
}

_base = Library("libmxmodule.so.1", {}, _ERROR_FUNCTIONS)
_error_code = _base.mxmodule_error_code
_error_findings = _base.mxmodule_error_findings
_error_free = _base.mxmodule_error_free
_bytes_data = _base.mxmodule_bytes_data
_bytes_size = _base.mxmodule_bytes_size
_bytes_free = _base.mxmodule_bytes_free


def _exception_of(error: ctypes.c_void_p) -> Exception:
    """Returns the exception of `error`, which it frees."""
    code = _error_code(error)
    try:
        findings = findings_of(_error_findings(error))
    finally:
        _error_free(error)
    if code == _NO_MEMORY:
        return MemoryError("No memory")
    return _EXCEPTIONS.get(code, Defect)(findings)


def _closed(arguments: tuple[Any, ...]) -> Error | None:
    """Returns the exception that one of `arguments` was freed, or None."""
    if not any(isinstance(one, Handle) and one.is_freed() for one in arguments):
        return None
    text = "The object was freed, with other objects of a cycle that the garbage collector found"
    return ClosedError([request_finding(text)])


def call(function: Any, *arguments: Any) -> Any:
    """Calls `function` and returns its result; raises what it fails with."""
    error = ctypes.c_void_p()
    thread = _calls.begin()
    try:
        result = function(*arguments, ctypes.byref(error))
    finally:
        _calls.end(thread)
    if error:
        failure = _exception_of(error)
        raise _closed(arguments) or failure
    return Pointer(result) if function.restype is HANDLE else result


def taken(result: Any) -> bytes:
    """Returns the content of the mxmodule_bytes at `result`, which it frees."""
    try:
        return ctypes.string_at(_bytes_data(result), _bytes_size(result))
    finally:
        _bytes_free(result)


def bytes_of(function: Any, *arguments: Any) -> bytes:
    """The same as `call` for a function that returns bytes."""
    return taken(call(function, *arguments))


def text_of(function: Any, *arguments: Any) -> str:
    """The same for a function that returns a text, which is always valid UTF-8."""
    return bytes_of(function, *arguments).decode("utf-8")


def json_of(function: Any, *arguments: Any) -> Any:
    """The same for a function that returns JSON."""
    return json.loads(bytes_of(function, *arguments))
