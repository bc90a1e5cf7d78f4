"""A module as plain data: the content of an mx file, without its bytes."""

from __future__ import annotations

import copy
import dataclasses
import struct
from dataclasses import dataclass, field
from fractions import Fraction

UINT8, UINT16, SINT8, SINT16, BYTE, UINT32, SINT32, UINT64, SINT64 = range(1, 10)
TYPE_NAMES = {UINT8: "UInt8", UINT16: "UInt16", SINT8: "SInt8", SINT16: "SInt16", BYTE: "Byte",
              UINT32: "UInt32", SINT32: "SInt32", UINT64: "UInt64", SINT64: "SInt64"}
WIDTHS = {UINT8: 1, UINT16: 2, SINT8: 1, SINT16: 2, BYTE: 1, UINT32: 4, SINT32: 4, UINT64: 8, SINT64: 8}
SIGNED = {SINT8, SINT16, SINT32, SINT64}
MODULE = 255
CONVERTED = 4  # bit 2 of a parameter's flags


def binary32(bits: int) -> Fraction | None:
    """The exact number of a binary32, None if it is not finite."""
    if bits & 0x7F800000 == 0x7F800000:
        return None
    return Fraction(struct.unpack(">f", struct.pack(">I", bits))[0])


@dataclass
class Conversion:
    ident: int
    factor: int  # bits of a binary32
    offset: int
    unit: str | None


@dataclass
class OptionList:
    ident: int
    options: list[tuple[int, str]]  # number as it is in the slot, text


@dataclass
class Channel:
    number: int
    name: str | None
    is_input: bool
    kind: int
    bits: int
    bit: int


@dataclass
class Parameter:
    number: int
    name: str
    position: int
    datatype: int
    flags: int = 3
    conversion: int = 0
    option_list: int = 0
    minimum: int = 0
    maximum: int = 0
    unit: str | None = None
    bits: int = 0
    bit: int = 0
    channel: int = MODULE

    @property
    def width(self) -> int:
        return WIDTHS[self.datatype]

    @property
    def signed(self) -> bool:
        return self.datatype in SIGNED

    @property
    def converted(self) -> bool:
        return bool(self.flags & CONVERTED)

    @property
    def has_options(self) -> bool:
        return self.option_list != 0 and not self.converted

    @property
    def bit_count(self) -> int:
        """Bits that the value takes; those up to the end of the byte if a bit field states none."""
        if self.datatype != BYTE:
            return 8 * self.width
        return self.bits or max(8 - self.bit, 0)

    @property
    def fits_its_byte(self) -> bool:
        return self.datatype != BYTE or (self.bit < 8 and self.bit + self.bit_count <= 8)

    @property
    def lowest_bit(self) -> int:
        """Its place in the image: bit 0 of byte 0 is 0."""
        return 8 * (self.position + self.width - 1) + (self.bit if self.datatype == BYTE else 0)

    def places(self) -> set[int]:
        """The bits of the image that the value takes, counted from bit 0 of byte 0."""
        if self.datatype != BYTE:
            return set(range(8 * self.position, 8 * (self.position + self.width)))
        first = 8 * self.position + self.bit
        return set(range(first, first + self.bit_count))


@dataclass
class Module:
    ident: int
    channels: list[Channel] = field(default_factory=list)
    parameters: list[Parameter] = field(default_factory=list)
    option_lists: list[OptionList] = field(default_factory=list)
    conversions: list[Conversion] = field(default_factory=list)
    block: bytes = b""
    has_text_form: bool = True  # false: a record that the text form has no words for

    def copy(self) -> Module:
        return copy.deepcopy(self)

    def lies_in_image(self, parameter: Parameter) -> bool:
        return parameter.position + parameter.width <= len(self.block)

    def is_usable(self, parameter: Parameter) -> bool:
        return self.lies_in_image(parameter) and parameter.fits_its_byte

    def options_of(self, parameter: Parameter) -> list[tuple[int, str]]:
        """Every list with the identifier counts, in file order."""
        if not parameter.has_options:
            return []
        return [option for one in self.option_lists if one.ident == parameter.option_list
                for option in one.options]

    def conversion_of(self, parameter: Parameter) -> tuple[Fraction, Fraction, str | None]:
        """Factor, offset and unit; 1, 0 and none if there is no usable conversion."""
        found = next((one for one in self.conversions if one.ident == parameter.conversion), None)
        if not parameter.converted or parameter.conversion == 0 or found is None:
            return Fraction(1), Fraction(0), None
        factor, offset = binary32(found.factor), binary32(found.offset)
        if not factor or offset is None:
            return Fraction(1), Fraction(0), None
        return factor, offset, found.unit

    def unit_of(self, parameter: Parameter) -> str:
        own = parameter.unit
        return own if own is not None else (self.conversion_of(parameter)[2] or "")


def described(parameter: Parameter) -> str:
    return " ".join(f"{key}={value!r}" for key, value in dataclasses.asdict(parameter).items())
