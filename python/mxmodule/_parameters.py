"""The parameters of a module."""

from __future__ import annotations

import ctypes
from decimal import Decimal
from typing import TYPE_CHECKING, Any, Iterable, Iterator, Mapping

from ._arguments import text_argument, whole_argument
from ._channels import Channel, ChannelWithoutSymbol
from ._description import Description
from ._errors import RequestError, UnknownName
from ._library import call
from ._mxmodule import library
from ._rows import data_frame, html_table
from ._values import Option, Place, option_of, place_of

if TYPE_CHECKING:
    import pandas


class Parameter:
    """A parameter of a module, with its default. It never changes."""

    __slots__ = ("_description", "_position", "_values")

    def __init__(self, description: Description, position: int) -> None:
        """The parameter at `position` of the module of `description`, which it keeps."""
        self._description = description
        self._position = position
        self._values: Any = description.device()["parameters"][position]

    @property
    def id(self) -> str:
        """Identifier in the device, decimal."""
        return str(self._values["id"])

    @property
    def name(self) -> str:
        """Its name; several parameters may have the same."""
        return str(self._values["name"])

    @property
    def name_bytes(self) -> bytes:
        """The name byte for byte as in the mx file, which states no code page."""
        return bytes.fromhex(self._raw_texts()["name"])

    @property
    def call_name(self) -> str:
        """The shortest name that means this parameter alone: "Filter", "AI 1/Filter", "#12"."""
        return str(self._values["call_name"])

    @property
    def channel(self) -> int | None:
        """Number of its channel; None: it is the module's own."""
        channel = self._values["channel"]
        return None if channel is None else int(channel)

    @property
    def type(self) -> str:
        """Name of the datatype, such as "UInt16"."""
        return str(self._values["type"])

    @property
    def value(self) -> str:
        """The default as people read it: "9.9 V", the text of an option."""
        return str(self._values["shown"])

    @property
    def digits(self) -> str:
        """The default as a decimal number, in `unit`; empty: it is outside the image."""
        return str(self._values["digits"])

    @property
    def number(self) -> Decimal | None:
        """The same as a number, in `unit`; None: it is outside the image."""
        return number_of(self.digits)

    @property
    def unit(self) -> str:
        """The unit of values; may be empty."""
        return str(self._values["unit"])

    @property
    def unit_bytes(self) -> bytes:
        """The unit byte for byte as in the mx file."""
        return bytes.fromhex(self._raw_texts()["unit"])

    @property
    def minimum(self) -> str:
        """The least value as a decimal number, in `unit`."""
        return str(self._values["min_digits"])

    @property
    def maximum(self) -> str:
        """The greatest value as a decimal number, in `unit`."""
        return str(self._values["max_digits"])

    @property
    def range(self) -> tuple[Decimal, Decimal]:
        """`minimum` and `maximum` as numbers, in `unit`."""
        return Decimal(self.minimum), Decimal(self.maximum)

    @property
    def has_options(self) -> bool:
        """Whether it is one of `options`, which may be empty; otherwise a number."""
        return bool(self._values["has_option_list"])

    @property
    def options(self) -> tuple[Option, ...]:
        """The options in the order of the list."""
        return tuple(option_of(one) for one in self._values["options"])

    @property
    def option_bytes(self) -> tuple[bytes, ...]:
        """The texts of the options byte for byte as in the mx file."""
        return tuple(bytes.fromhex(one) for one in self._raw_texts()["options"])

    @property
    def is_accepted(self) -> bool:
        """Whether the default is in the range or one of the options."""
        return bool(self._values["accepted"])

    @property
    def is_physical(self) -> bool:
        """Whether values are in units other than the stored number."""
        return bool(self._values["physical"])

    @property
    def flags(self) -> tuple[bool, bool]:
        """Bits 0 and 1 of the flags, at the disposal of the author of the module."""
        return bool(self._values["flag_bit_0"]), bool(self._values["flag_bit_1"])

    @property
    def place(self) -> Place:
        """Where the value is in the raw parameter image."""
        return place_of(self._values["place"])

    def _raw_texts(self) -> Any:
        return self._description.raw_texts()["parameters"][self._position]

    def __eq__(self, other: object) -> bool:
        """Whether all that is stated of both is the same, also if they are of different modules."""
        if not isinstance(other, Parameter):
            return NotImplemented
        return self._position == other._position and bool(self._values == other._values)

    def __hash__(self) -> int:
        return hash((self._position, self.id, self.name))

    def __repr__(self) -> str:
        return f"<Parameter {self.call_name!r}: {self.value}>"


_COLUMNS = (
    "call_name",
    "channel",
    "type",
    "value",
    "unit",
    "minimum",
    "maximum",
)


def number_of(digits: str) -> Decimal | None:
    """Returns a decimal number; None for no digits."""
    return Decimal(digits) if digits else None


def numbers_of(texts: Iterable[str]) -> list[float]:
    """Returns decimal numbers as a column of a data frame, NaN for no digits."""
    return [float(one or "nan") for one in texts]


class Parameters(Mapping[str, Parameter]):
    """The parameters of a module by name, in the order of the device.

    `parameters[name]` takes "NAME", "CHANNEL/NAME" or "#ID", as `Module.compose` does; an unknown
    or ambiguous name raises `UnknownName` with the nearest ones. Iteration gives `call_name`.
    """

    __slots__ = ("_description", "_parameters", "_positions")

    def __init__(self, description: Description) -> None:
        """Of the module of `description`, which it keeps."""
        self._description = description
        count = len(description.device()["parameters"])
        self._parameters = [Parameter(description, position) for position in range(count)]
        self._positions = {one.call_name: i for i, one in enumerate(self._parameters)}

    def __getitem__(self, name: str) -> Parameter:
        position = self._positions.get(name) if isinstance(name, str) else None
        return self._parameters[self._found(name) if position is None else position]

    def of_channel(self, channel: Channel | ChannelWithoutSymbol | int | None) -> list[Parameter]:
        """Returns the parameters of a channel, which may be given by its number; None: those of the
        module itself. Raises `WrongType`."""
        number: int | None = None
        if isinstance(channel, (Channel, ChannelWithoutSymbol)):
            number = channel.number
        elif channel is not None:
            number = whole_argument(channel, "a channel", "Channel", "None")
        return [one for one in self._parameters if one.channel == number]

    def _found(self, name: str) -> int:
        position = ctypes.c_size_t()
        argument = text_argument(name, "the name of a parameter")
        try:
            call(library.mxmodule_parameter_called, self._description.handle, argument, position)
        except RequestError as failure:
            raise UnknownName(failure.findings) from None
        return position.value

    def __contains__(self, name: object) -> bool:
        if not isinstance(name, str):
            return False
        try:
            self[name]
        except RequestError:
            return False
        return True

    def __iter__(self) -> Iterator[str]:
        return iter(self._positions)

    def __len__(self) -> int:
        return len(self._parameters)

    def __repr__(self) -> str:
        return f"<Parameters of {len(self)}>"

    def to_dataframe(self) -> pandas.DataFrame:
        """Returns a row for each parameter; `number`, `minimum` and `maximum` are floats, in the
        unit. Raises `MissingLibrary` without pandas."""
        listed = list(self.values())
        columns: dict[str, Any] = {name: [getattr(p, name) for p in listed] for name in _COLUMNS}
        columns["number"] = numbers_of(one.digits for one in listed)
        columns["minimum"] = numbers_of(columns["minimum"])
        columns["maximum"] = numbers_of(columns["maximum"])
        return data_frame(columns)

    def _repr_html_(self) -> str:
        rows = [[getattr(one, name) for name in _COLUMNS] for one in self.values()]
        return html_table(["name", *_COLUMNS[1:]], rows)
