"""Raw values in a parameter image, which of them a parameter accepts, and what they mean."""

from __future__ import annotations

from fractions import Fraction

from description import BYTE, Module, Parameter


def read(one: Parameter, image: bytes) -> int:
    if one.datatype == BYTE:
        return (image[one.position] >> one.bit) & ((1 << one.bit_count) - 1)
    return int.from_bytes(image[one.position:one.position + one.width], "big", signed=one.signed)


def write(one: Parameter, image: bytearray, raw: int) -> None:
    if one.datatype == BYTE:
        mask = ((1 << one.bit_count) - 1) << one.bit
        image[one.position] = (image[one.position] & ~mask) | (raw << one.bit)
        return
    image[one.position:one.position + one.width] = raw.to_bytes(one.width, "big", signed=one.signed)


def natural_range(one: Parameter) -> tuple[int, int]:
    if one.datatype != BYTE and one.signed:
        return -(1 << (one.bit_count - 1)), (1 << (one.bit_count - 1)) - 1
    return 0, (1 << one.bit_count) - 1


def low_bytes(one: Parameter, slot: int) -> int:
    """A number of an 8-byte slot as the parameter's datatype reads it."""
    low = slot % (1 << (8 * one.width))
    return low - (1 << (8 * one.width)) if one.signed and low >> (8 * one.width - 1) else low


def options(module: Module, one: Parameter) -> list[tuple[int, str]]:
    """Numbers and texts of the options, the numbers as the datatype reads them."""
    return [(low_bytes(one, number), text) for number, text in module.options_of(one)]


def holds(one: Parameter, raw: int) -> bool:
    low, high = natural_range(one)
    return low <= raw <= high


class Accepted:
    """The raw values that a parameter accepts: some numbers, or all from `low` to `high`."""

    def __init__(self, module: Module, one: Parameter) -> None:
        self.numbers: set[int] | None = None
        self.low, self.high = natural_range(one)
        if one.has_options:
            self.numbers = {number for number, _ in options(module, one) if holds(one, number)}
        elif one.minimum or one.maximum:
            self.low = max(self.low, low_bytes(one, one.minimum))
            self.high = min(self.high, low_bytes(one, one.maximum))

    def __contains__(self, raw: int) -> bool:
        return raw in self.numbers if self.numbers is not None else self.low <= raw <= self.high

    def count(self) -> int:
        return len(self.numbers) if self.numbers is not None else max(self.high - self.low + 1, 0)

    def bounds(self) -> list[int]:
        return sorted(self.numbers) if self.numbers is not None else [self.low, self.high]


def physical(module: Module, one: Parameter, raw: int) -> Fraction:
    factor, offset, _ = module.conversion_of(one)
    return raw * factor + offset


def nearest(module: Module, one: Parameter, value: Fraction) -> set[int]:
    """The raw values whose physical values are nearest to `value`; two if it is in the middle."""
    factor, offset, _ = module.conversion_of(one)
    exact = (value - offset) / factor
    low = exact.numerator // exact.denominator
    if exact - low == Fraction(1, 2):
        return {low, low + 1}
    return {low + 1 if exact - low > Fraction(1, 2) else low}
