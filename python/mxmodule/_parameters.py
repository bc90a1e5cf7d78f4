"""The parameters of a module."""

from __future__ import annotations

import ctypes
from typing import TYPE_CHECKING, Any, Iterator, Mapping

from ._arguments import text_argument
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
        """The default as a decimal number; empty: it is outside the image."""
        return str(self._values["digits"])

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
        """The least value, in the unit."""
        return str(self._values["min_digits"])

    @property
    def maximum(self) -> str:
        """The greatest value, in the unit."""
        return str(self._values["max_digits"])

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
        """Returns a row for each parameter. Raises `MissingLibrary` without pandas."""
        return data_frame({name: [getattr(p, name) for p in self.values()] for name in _COLUMNS})

    def _repr_html_(self) -> str:
        rows = [[getattr(one, name) for name in _COLUMNS] for one in self.values()]
        return html_table(["name", *_COLUMNS[1:]], rows)
