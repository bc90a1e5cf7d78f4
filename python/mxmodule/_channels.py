"""The channels of a module in the process images."""

from __future__ import annotations

import json
from operator import itemgetter
from typing import Any, NamedTuple, Tuple

from ._arguments import separator_argument
from ._description import Description
from ._library import bytes_of, text_of
from ._mxmodule import library
from ._rows import Rows, Svg


class Channel(NamedTuple):
    """A channel that has a place in a process image.

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


class ChannelWithoutSymbol(NamedTuple):
    """A channel that is in no process image.

    - `id`: identifier in the device, decimal.
    - `number`: several channels may have the same.
    - `name`: may be empty.
    - `direction`: "in", "out" or empty.
    """

    id: str
    number: int
    name: str
    direction: str


class BitRun(NamedTuple):
    """Consecutive bits of a process image.

    - `byte`: of the first bit.
    - `bit`: the first bit in this byte.
    - `bits`: number of bits.
    """

    byte: int
    bit: int
    bits: int


class ImageArea(NamedTuple):
    """The part of a process image that belongs to a module.

    - `first_byte`: in the process image.
    - `size`: in bytes.
    - `free`: bits of the data without a channel, in order.
    - `overlapping`: bits of more than one channel, in order.
    """

    first_byte: int
    size: int
    free: Tuple[BitRun, ...]
    overlapping: Tuple[BitRun, ...]


_members = itemgetter(*Channel._fields)
_members_without_symbol = itemgetter(*ChannelWithoutSymbol._fields)


def _runs(values: Any) -> tuple[BitRun, ...]:
    return tuple(BitRun(one["byte"], one["bit"], one["bits"]) for one in values)


def _area(values: Any) -> ImageArea:
    return ImageArea(
        values["first_byte"], values["size"], _runs(values["free"]), _runs(values["overlapping"])
    )


class Channels(Rows[Channel]):
    """The channels of a module that have a place in a process image, in the order of the device."""

    __slots__ = ("_description", "_json", "_values")

    def __init__(self, description: Description) -> None:
        """Of the module of `description`, which it keeps."""
        self._description = description
        self._json = bytes_of(library.mxmodule_channels_json, description.handle)
        self._values = json.loads(self._json)
        rows = [Channel._make(_members(one)) for one in self._values["channels"]]
        super().__init__(rows, Channel._fields)

    @property
    def input(self) -> ImageArea:
        """The module's part of the input image."""
        return _area(self._values["input"])

    @property
    def output(self) -> ImageArea:
        """The module's part of the output image."""
        return _area(self._values["output"])

    @property
    def without_symbol(self) -> Rows[ChannelWithoutSymbol]:
        """The channels in no image."""
        listed = self._values["without_symbol"]
        rows = [ChannelWithoutSymbol._make(_members_without_symbol(one)) for one in listed]
        return Rows(rows, ChannelWithoutSymbol._fields)

    @property
    def name_bytes(self) -> dict[str, bytes]:
        """The names by the `id` of their channels, byte for byte as in the mx file, which states no
        code page; also of channels without a place."""
        identifiers = [one["id"] for one in self._description.device()["channels"]]
        names = self._description.raw_texts()["channels"]
        return {one: bytes.fromhex(name) for one, name in zip(identifiers, names)}

    def text(self) -> str:
        """Returns a table for people, as `mxtool channels` prints it."""
        return text_of(library.mxmodule_channels_text, self._description.handle)

    def csv(self, separator: str = ",", *, byte_order_mark: bool = False) -> str:
        """Returns the table as CSV. `separator` is a comma, a semicolon or a tab."""
        argument = separator_argument(separator)
        handle = self._description.handle
        return text_of(library.mxmodule_channels_csv, handle, argument, bool(byte_order_mark))

    def json(self) -> str:
        """Returns all of it as JSON, schema "mxtool.channels"."""
        return self._json.decode("utf-8")

    def declarations(self) -> str:
        """Returns IEC 61131-3 declarations of global variables."""
        return text_of(library.mxmodule_channels_declarations, self._description.handle)

    def svg(self) -> Svg:
        """Returns a picture of the process images."""
        return Svg(text_of(library.mxmodule_channels_svg, self._description.handle))

    def drawing(self, *, coloured: bool = False) -> str:
        """Returns the picture as text of 80 columns; `coloured`: with terminal colour codes."""
        handle = self._description.handle
        return text_of(library.mxmodule_channels_drawing, handle, bool(coloured))
