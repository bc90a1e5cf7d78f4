"""Values that are written into a parameter image."""

from __future__ import annotations

import builtins
import ctypes
import warnings
from typing import Mapping

from ._arguments import Value, text_argument, value_argument
from ._errors import InputError, SideEffectWarning, wrong_type
from ._findings import findings_of
from ._handle import Handle
from ._mxmodule import Assignment, library


def assignments_of(values: Mapping[str, Value]) -> ctypes.Array[Assignment]:
    """Returns `values` of parameters by name for the C interface. Raises `WrongType`."""
    if not isinstance(values, Mapping):
        raise wrong_type("the values", values, "dict")
    assignments = [
        Assignment(
            text_argument(name, "the name of a parameter"),
            value_argument(value, name),
        )
        for name, value in values.items()
    ]
    return (Assignment * len(assignments))(*assignments)


class Composition:
    """What becomes of values in a parameter image. Warns of side effects: made by a method of
    `Module` that a public one calls, so that the warning is at the caller's line."""

    __slots__ = ("_handle",)

    def __init__(self, pointer: int) -> None:
        self._handle = Handle(pointer, library.mxmodule_composition_free)
        findings = library.mxmodule_composition_findings(self._handle)
        if findings is not None:
            for finding in findings_of(findings):
                warnings.warn(SideEffectWarning(str(finding)), stacklevel=4)

    def image(self) -> builtins.bytes:
        """Returns the raw parameter image."""
        size = ctypes.c_size_t()
        first = library.mxmodule_composition_image(self._handle, size)
        return ctypes.string_at(first, size.value) if size else b""

    def bytes(self, fieldbus: int) -> builtins.bytes:
        """Returns what a master writes."""
        if fieldbus == 0:
            return self.image()
        return b"".join(one.to_bytes(2, "big") for one in self.registers())

    def registers(self) -> list[int]:
        """Returns the Modbus registers. Raises `InputError` if there is no Modbus form."""
        reason = library.mxmodule_composition_no_registers(self._handle)
        if reason is not None:
            raise InputError(findings_of(reason))
        count = ctypes.c_size_t()
        first = library.mxmodule_composition_registers(self._handle, count)
        return list((ctypes.c_uint16 * count.value).from_address(first)) if count else []
