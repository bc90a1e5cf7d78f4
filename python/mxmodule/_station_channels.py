"""The channels of a station."""

from __future__ import annotations

import json
from operator import itemgetter
from typing import NamedTuple

from ._arguments import separator_argument
from ._handle import Handle, not_from_library
from ._library import bytes_of, text_of
from ._mxstation import library
from ._rows import Rows


class StationChannel(NamedTuple):
    """A channel with its place in a process image of a station.

    - `module`: position of its module, from 1.
    - `module_name`: name of its module.
    - `alias`: name that the station gives it; may be empty.
    - `comment`: may be empty.
    - `id`: identifier in the device, decimal.
    - `number`: several channels may have the same.
    - `name`: may be empty.
    - `direction`: "in" or "out".
    - `symbol`: IEC address such as "IW4".
    - `area`: "I" or "Q".
    - `size_letter`: "X", "B", "W", "D" or "L".
    - `byte`: first byte in the image.
    - `bit_offset`: as in the mx file; may be above 7.
    - `bit_length`: in bits.
    - `mask`: 2 to the power of the number of bits, minus 1, at most 255.
    """

    module: int
    module_name: str
    alias: str
    comment: str
    id: str
    number: int
    name: str
    direction: str
    symbol: str
    area: str
    size_letter: str
    byte: int
    bit_offset: int
    bit_length: int
    mask: int


class StationChannelWithoutSymbol(NamedTuple):
    """A channel of a module that is in no process image.

    - `module`: position of its module, from 1.
    - `module_name`: name of its module.
    - `id`: identifier in the device, decimal.
    - `number`: several channels may have the same.
    - `name`: may be empty.
    - `direction`: "in", "out" or empty.
    """

    module: int
    module_name: str
    id: str
    number: int
    name: str
    direction: str


_members = itemgetter(*StationChannel._fields)
_members_without_symbol = itemgetter(*StationChannelWithoutSymbol._fields)


class StationChannels(Rows[StationChannel]):
    """The channels of a station that have a place in a process image, in the order of the row."""

    __slots__ = ("_plan", "_json", "_values")

    def __init__(self, plan: Handle) -> None:
        """Of the mxstation_plan of `plan`, which it keeps; use `Plan.channels`."""
        if not isinstance(plan, Handle):
            raise not_from_library(plan)
        self._plan = plan
        self._json = bytes_of(library.mxstation_channels_json, plan)
        self._values = json.loads(self._json)
        rows = [StationChannel._make(_members(one)) for one in self._values["channels"]]
        super().__init__(rows, StationChannel._fields)

    @property
    def without_symbol(self) -> Rows[StationChannelWithoutSymbol]:
        """The channels in no image."""
        listed = self._values["without_symbol"]
        rows = [StationChannelWithoutSymbol._make(_members_without_symbol(one)) for one in listed]
        return Rows(rows, StationChannelWithoutSymbol._fields)

    def text(self) -> str:
        """Returns a table for people, as `mxtool station channels` prints it."""
        return text_of(library.mxstation_channels_text, self._plan)

    def csv(self, separator: str = ",", *, byte_order_mark: bool = False) -> str:
        """Returns the channels as CSV. `separator` is a comma, a semicolon or a tab."""
        argument = separator_argument(separator)
        return text_of(library.mxstation_channels_csv, self._plan, argument, bool(byte_order_mark))

    def json(self) -> str:
        """Returns all of it as JSON, schema "mxtool.station-channels"."""
        return self._json.decode("utf-8")
