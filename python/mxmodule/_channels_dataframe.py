"""The channels of many modules as one data frame."""

from __future__ import annotations

import ctypes
import json
from typing import TYPE_CHECKING, Any, Iterable

from ._errors import wrong_type
from ._handle import Handle
from ._library import HANDLE, call
from ._module import Module
from ._mxmodule import library
from ._rows import data_frame

if TYPE_CHECKING:
    import pandas

# As mxmodule_number_column and mxmodule_text_column.
_MODULE, _NUMBER, _AREA, _KIND, _BYTE, _BIT_OFFSET, _BIT_LENGTH, _MASK = range(8)
_ID, _NAME, _SYMBOL, _MODULE_ID, _LABEL = range(5)


class _Columns:
    """The columns of the channels of `modules`, copied from the library."""

    def __init__(self, modules: list[Module]) -> None:
        handles = [one._handle._as_parameter_ for one in modules]
        array = (HANDLE * len(handles))(*handles)
        pointer = call(library.mxmodule_columns_of, array, len(handles))
        self._handle = Handle(pointer, library.mxmodule_columns_free)
        self._rows = library.mxmodule_columns_rows(self._handle)

    def numbers(self, column: int) -> Any:
        """Returns a column of numbers as an array of numpy."""
        import numpy

        first = library.mxmodule_columns_numbers(self._handle, column)
        content = ctypes.string_at(first, 4 * self._rows) if self._rows else b""
        return numpy.frombuffer(content, dtype=numpy.uint32).astype(numpy.int64)

    def texts(self, column: int) -> Any:
        """Returns a column of texts as an array of numpy."""
        texts = json.loads(library.mxmodule_columns_texts(self._handle, column))
        return _objects(texts)


def _objects(texts: list[str]) -> Any:
    import numpy

    return numpy.array(texts, dtype=object)


def _letters(names: dict[str, str]) -> Any:
    """Returns the text for each letter, by its number."""
    texts = [""] * 128
    for letter, text in names.items():
        texts[ord(letter)] = text
    return _objects(texts)


def channels_dataframe(modules: Iterable[Module]) -> pandas.DataFrame:
    """Returns a row for each channel of `modules` that has a place in a process image, with the
    members of `Channel`, and `module_id` and `label` of its module.

    Raises `WrongType`, or `MissingLibrary` without pandas.
    """
    try:
        listed = list(modules)
    except TypeError:
        raise wrong_type("the modules", modules, "a list of Module") from None
    for one in listed:
        if not isinstance(one, Module):
            raise wrong_type("a module", one, "Module")
    data_frame({})  # without pandas this says so, before numpy is missing
    columns = _Columns(listed)
    module = columns.numbers(_MODULE)
    area = columns.numbers(_AREA)
    return data_frame(
        {
            "module_id": columns.texts(_MODULE_ID)[module],
            "label": columns.texts(_LABEL)[module],
            "id": columns.texts(_ID),
            "number": columns.numbers(_NUMBER),
            "name": columns.texts(_NAME),
            "direction": _letters({"I": "in", "Q": "out"})[area],
            "symbol": columns.texts(_SYMBOL),
            "area": _letters({"I": "I", "Q": "Q"})[area],
            "size_letter": _letters({one: one for one in "XBWDL"})[columns.numbers(_KIND)],
            "byte": columns.numbers(_BYTE),
            "bit_offset": columns.numbers(_BIT_OFFSET),
            "bit_length": columns.numbers(_BIT_LENGTH),
            "mask": columns.numbers(_MASK),
        }
    )
