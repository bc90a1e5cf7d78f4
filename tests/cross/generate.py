"""Random modules with odd records. The same random numbers make the same module."""

from __future__ import annotations

import random
import struct

from description import (BYTE, CONVERTED, MODULE, UINT8, WIDTHS, Channel, Conversion, Module,
                         OptionList, Parameter)
from values import Accepted, holds, natural_range, write

NAMES = ["Limit", "Mode", "Filter", "a", "b", "a=b", "a=b=1", "AI 1/Mode", "x/y", " lead", "trail ", "two  blanks",
         "#1", "#17", "17", "1", "0", "module/Mode", "Temp °C", "=", "/", "on", "ÄÖÜ", "±µ", "-x", "--set", "a,b",
         'quo"te', "it's", "a:b", "{x}", "~", "null", "true", "0x10", "1e3", "*", "a\\b", "!", "0/Mode", "limit",
         "Mode=1", "@a", "+1", "%d", "&x"]
CHANNEL_NAMES = ["AI 1", "AI 2", "DO", "a", "x", "0", "1", "module", "-", "AI=1", "a/b", " ", "trail ", "Ä", "#3"]
OPTION_TEXTS = ["on", "off", "auto", "1", "0", "2", "-1", "3 ms", "0.5", "b=1", "#2", "auto ", " x", "a/b", "é",
                "yes", "null", "10 V", "0x1", "1e0", "=", "On", "a,b", "~", "a=0", "x=2", "b=100"]
UNITS = ["V", "mA", "°C", "%", "1", "3", "5 V", "m/s", "1/min", "e5", "E3", "-", "+", "0", "x10", ".5", "V ", "µm",
         "#", "=", "00", ","]
FACTORS = [1.0, -1.0, 0.1, 0.01, 0.001, -0.01, 0.5, 2.0, 3.0, 1 / 3, 1e-10, 1e10, 16777216.0, 1e-30, 1e-38, 1e25,
           -2.5, 2.0 ** -149]
ODD_FACTORS = [0.0, -0.0, float("inf"), float("nan")]
OFFSETS = [0.0, 0.0, 0.0, -5.0, 20.0, 273.15, 1e10, -1e-5, 0.1]
LARGEST_BLOCK = 60


def float_bits(value: float) -> int:
    return struct.unpack(">I", struct.pack(">f", value))[0]


def conversion(choose: random.Random, ident: int) -> Conversion:
    factor = choose.choice(ODD_FACTORS if choose.random() < 0.08 else FACTORS)
    offset = float("nan") if choose.random() < 0.04 else choose.choice(OFFSETS)
    return Conversion(ident, float_bits(factor), float_bits(offset), choose.choice(UNITS + [None, None]))


def option_list(choose: random.Random, ident: int) -> OptionList:
    numbers = choose.sample([0, 1, 2, 3, 4, 5, 7, 9, 100, 127, 128, 255, 256, 300], choose.randint(1, 6))
    texts = choose.sample(OPTION_TEXTS, len(numbers))
    if choose.random() < 0.2:
        numbers[0] = -choose.randint(1, 128)
    if choose.random() < 0.1:
        texts[-1] = texts[0]
    if choose.random() < 0.1:
        numbers[-1] = numbers[0]
    return OptionList(ident, list(zip(numbers, texts)))


def channel(choose: random.Random, number: int) -> Channel:
    kind = choose.choice([1, 2, 3, 4, BYTE, BYTE, 6, 7, 8, 9])
    bits = choose.randint(1, 8) if kind == BYTE else 8 * WIDTHS[kind]
    name = choose.choice(CHANNEL_NAMES) if choose.random() < 0.85 else None
    return Channel(number, name, choose.random() < 0.6, kind, bits, choose.randint(0, 7) if kind == BYTE else 0)


def channels(choose: random.Random) -> list[Channel]:
    numbers = choose.sample([0, 1, 2, 3, 7, 10, 17, 200, 254, 255], choose.randint(1, 4))
    made = [channel(choose, number) for number in numbers]
    if choose.random() < 0.15:
        again = channel(choose, made[0].number)
        again.name = None
        made.append(again)
    return made


def place(choose: random.Random, one: Parameter, free: int) -> int:
    """The place of the parameter, and the first free byte after it; bit fields may share a byte."""
    if one.datatype == BYTE and choose.random() < 0.8:
        one.bits = choose.randint(0, 8)
        one.bit = choose.randint(0, 8 - one.bits) if one.bits else choose.randint(0, 7)
    one.position = free + (choose.randint(1, 3) if choose.random() < 0.2 else 0)
    return one.position + one.width


def limit(choose: random.Random, one: Parameter) -> None:
    low, high = natural_range(one)
    if choose.random() < 0.4:
        return
    ends = [low, high, 0, 1, high - 1, low + 1, choose.randint(low, high), choose.randint(low, high), 100, high // 2]
    pair = sorted(end for end in choose.sample(ends, 2))
    one.minimum, one.maximum = max(pair[0], low), min(pair[1], high)


def parameter(choose: random.Random, module: Module, number: int) -> Parameter:
    numbers = [one.number for one in module.channels]
    one = Parameter(number, choose.choice(NAMES), 0, choose.randint(UINT8, 9), flags=choose.choice([3, 3, 0, 1]))
    one.channel = choose.choice(numbers + [MODULE, MODULE, choose.randint(0, 255)])
    kind = choose.random()
    if module.conversions and kind < 0.4:
        one.conversion = choose.choice(module.conversions).ident
        one.flags = 7 if choose.random() < 0.9 else one.flags
    elif module.option_lists and kind < 0.65:
        one.option_list = choose.choice(module.option_lists).ident
    elif kind < 0.7:
        one.flags |= CONVERTED
        one.conversion = choose.choice([0, 99])
    if choose.random() < 0.3:
        one.unit = choose.choice(UNITS)
    return one


def parameters(choose: random.Random, module: Module) -> int:
    """Fills in the parameters; returns the first byte after the last."""
    free = 0
    for number in range(1, choose.randint(1, 8) + 1):
        one = parameter(choose, module, number)
        end = place(choose, one, free)
        if module.parameters and choose.random() < 0.06:
            one.position = choose.choice(module.parameters).position
        if one.option_list == 0:
            limit(choose, one)
        module.parameters.append(one)
        free = max(free, end)
        if one.datatype == BYTE and choose.random() < 0.5 and one.bits + one.bit < 6:
            sibling = parameter(choose, module, 100 + number)
            sibling.datatype, sibling.position, sibling.bit = BYTE, one.position, one.bit + one.bit_count
            sibling.bits = max(choose.randint(0, max(8 - sibling.bit, 0)), 1)
            if sibling.bit + sibling.bits <= 8:
                if sibling.option_list == 0:
                    limit(choose, sibling)
                module.parameters.append(sibling)
    return free


def fill_block(choose: random.Random, module: Module, size: int) -> None:
    """Random bytes where there is no parameter, accepted defaults where there is one."""
    block = bytearray(choose.randbytes(size) if choose.random() < 0.7 else size)
    module.block = bytes(block)
    for one in module.parameters:
        accepted = Accepted(module, one)
        if module.is_usable(one) and accepted.count():
            write(one, block, choose.choice([raw for raw in accepted.bounds() if holds(one, raw)]))
    module.block = bytes(block)


def odd_record(choose: random.Random, module: Module) -> None:
    """Records that the text form cannot express: bit fields outside their byte, ranges wider than the datatype."""
    one = choose.choice(module.parameters)
    if one.datatype == BYTE:
        one.bits, one.bit = choose.choice([(8, 4), (3, 7), (9, 0), (1, 8), (0, 8), (2, 255)])
        module.has_text_form = False
    elif one.minimum or one.maximum:
        one.minimum += 1 << (8 * one.width) if one.width < 8 else 0
        module.has_text_form = module.has_text_form and one.width == 8


def name_like_an_assignment(choose: random.Random, module: Module) -> None:
    """Parameters X with an option "b=1" and X=b: "X=b=1" may set either."""
    found = [(one, text) for one in module.parameters for _, text in module.options_of(one) if text.find("=") > 0]
    if found:
        one, text = choose.choice(found)
        other = choose.choice(module.parameters)
        if other is not one:
            one.name = f"Twin {one.number}"
            other.name = f"{one.name}={text.partition('=')[0]}"


def module(choose: random.Random) -> Module:
    made = Module(choose.randint(1, 0xFFFFFFFF))
    made.channels = channels(choose)
    made.option_lists = [option_list(choose, ident) for ident in range(1, choose.randint(1, 4))]
    if made.option_lists and choose.random() < 0.15:
        made.option_lists.append(option_list(choose, made.option_lists[0].ident))
    made.conversions = [conversion(choose, ident) for ident in range(1, choose.randint(1, 4))]
    size = parameters(choose, made)
    if choose.random() < 0.1:
        odd_record(choose, made)
    if choose.random() < 0.3:
        name_like_an_assignment(choose, made)
    if choose.random() < 0.1 and size > 1:
        size -= choose.randint(1, min(size - 1, 3))
    fill_block(choose, made, size + (choose.randint(1, 3) if choose.random() < 0.1 else 0))
    return made
