"""What the library tells of a module, read when it is asked for."""

from __future__ import annotations

from typing import Any

from ._handle import Handle
from ._library import json_of
from ._mxmodule import library


class Description:
    """The content of a module: of the schemas "mxtool.device" and "mxmodule.raw-texts".

    Read at the first use and kept; two threads may read it twice, with the same result.
    """

    __slots__ = ("handle", "_device", "_raw_texts", "__weakref__")

    def __init__(self, handle: Handle) -> None:
        """Of the module of `handle`, which it keeps."""
        self.handle = handle
        self._device: Any = None
        self._raw_texts: Any = None

    def device(self) -> Any:
        """Returns the object of the schema "mxtool.device"."""
        if self._device is None:
            self._device = json_of(library.mxmodule_json, self.handle)
        return self._device

    def raw_texts(self) -> Any:
        """Returns the object of the schema "mxmodule.raw-texts"."""
        if self._raw_texts is None:
            self._raw_texts = json_of(library.mxmodule_raw_texts, self.handle)
        return self._raw_texts
