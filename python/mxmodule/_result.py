"""Results of the libraries that say what they have as JSON."""

from __future__ import annotations

import json
from typing import Any

from ._handle import Handle
from ._library import text_of


class Result:
    """A result of a library, and its JSON. It never changes."""

    __slots__ = ("_handle", "_json", "_values")

    def __init__(self, handle: Handle, json_function: Any) -> None:
        """Of what `handle` leads to, of which `json_function` gives the JSON."""
        self._handle = handle
        self._json = text_of(json_function, handle)
        self._values = json.loads(self._json)
