"""The text form of a module, written only from docs/text-form.md."""

from __future__ import annotations

import random
import struct
from fractions import Fraction

from assignments import decimal_text
from description import BYTE, MODULE, TYPE_NAMES, Channel, Conversion, Module, OptionList, Parameter
from mxfile import CATALOGUE, COMPONENT, MODULE_TYPE, data_sizes
from values import low_bytes, physical, read

PLAIN_FLAGS = {True: 7, False: 3}


def quoted(text: str) -> str:
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\t", "\\t")
    return f'"{escaped}"'


def number_text(bits: int) -> str:
    """A decimal that is read as this binary32; its bits if there is none."""
    value = struct.unpack(">f", struct.pack(">I", bits))[0]
    for digits in range(1, 10):
        text = f"{value:.{digits}g}"
        if "n" not in text and 1e-37 < abs(value) < 3e38 and struct.pack(">f", float(text)) == struct.pack(">I", bits):
            return text
    return f"bits {bits:08x}"


def channel_line(one: Channel, taken: set[int]) -> str:
    name = "" if one.name is None else f"name: {quoted(one.name)}, "
    kind = TYPE_NAMES.get(one.kind, str(one.kind))
    again = ", again: true" if one.number in taken else ""
    taken.add(one.number)
    direction = "in" if one.is_input else "out"
    return f"  - {{{name}number: {one.number}, {direction}: {kind}, bits: {one.bits}, bit: {one.bit}{again}}}"


def decimal(bits: int) -> Fraction | None:
    """The number that an author writes for a binary32, such as 0.1; None if it is stated by its bits."""
    text = number_text(bits)
    return Fraction(text) if "bits" not in text else None


def physical_text(module: Module, one: Parameter, raw: int) -> str | None:
    """The physical value with few digits and its unit; None if there is none."""
    found = next((other for other in module.conversions if other.ident == one.conversion), None)
    if found is None or not one.converted or not module.unit_of(one):
        return None
    factor, offset = decimal(found.factor), decimal(found.offset) if found.offset else Fraction(0)
    if not factor or offset is None:
        return None
    value = raw * factor + offset
    close = abs(value - physical(module, one, raw)) <= abs(factor) / 100
    return quoted(f"{decimal_text(value)} {module.unit_of(one)}") if close else None


def range_text(module: Module, one: Parameter, choose: random.Random) -> str:
    """Least and greatest value, raw or physical."""
    ends = [physical_text(module, one, raw) for raw in (one.minimum, one.maximum)]
    if None in ends or choose.random() < 0.5:
        return f"range: [{one.minimum}, {one.maximum}]"
    if module.conversion_of(one)[0] < 0:
        ends.reverse()
    return f"range: [{ends[0]}, {ends[1]}]"


def default_text(module: Module, one: Parameter, choose: random.Random) -> str | None:
    """The default as text, None if it has no unambiguous text."""
    value = read(one, module.block)
    options = module.options_of(one)
    same_text = [number for number, text in options if text == str(value)]
    if not options:
        return choose.choice([physical_text(module, one, value), None]) or str(value)
    texts = [text for number, text in options if low_bytes(one, number) == value == number]
    if texts and choose.random() < 0.5 and [text for _, text in options].count(texts[0]) == 1:
        return quoted(texts[0])
    if not texts or [number for number in same_text if number != value]:
        return None
    return str(value)


def parameter_line(module: Module, one: Parameter, with_default: bool, choose: random.Random) -> str:
    words = [f"name: {quoted(one.name)}", f"number: {one.number}", f"at: {one.position}",
             f"type: {TYPE_NAMES[one.datatype]}"]
    if one.channel != MODULE or choose.random() < 0.3:
        words.append(f"channel: {one.channel}")
    if one.datatype == BYTE and (one.bits or one.bit or choose.random() < 0.5):
        words.append(f"bits: {one.bits}, bit: {one.bit}")
    if one.minimum or one.maximum:
        words.append(range_text(module, one, choose))
    if one.option_list:
        words.append(f"options: {list_name(one.option_list)}")
    if one.conversion:
        words.append(f"conversion: {conversion_name(module, one.conversion)}")
    if one.unit is not None:
        words.append(f"unit: {quoted(one.unit)}")
    if one.flags != PLAIN_FLAGS[bool(one.conversion)]:
        words.append(f"flags: {one.flags}")
    default = default_text(module, one, choose) if with_default and module.is_usable(one) else None
    if default is not None:
        words.append(f"default: {default}")
    if shares_bits(module, one):
        words.append("overlaps: true")
    return "  - {" + ", ".join(words) + "}"


def shares_bits(module: Module, one: Parameter) -> bool:
    earlier = module.parameters[:module.parameters.index(one)]
    return any(one.places() & other.places() for other in earlier)


def list_name(ident: int) -> str:
    return f"list-{ident}"


def conversion_name(module: Module, ident: int) -> str:
    known = any(one.ident == ident for one in module.conversions)
    return f"conversion-{ident}" if known else str(ident)


def option_list_lines(one: OptionList, part: int) -> list[str]:
    name = list_name(one.ident) + ("" if part == 0 else f"-{part}")
    numbers = [number for number, _ in one.options]
    words = [f"{number}: {quoted(text)}" for number, text in one.options]
    if len(set(numbers)) == len(numbers):
        options = "{" + ", ".join(words) + "}"
    else:
        options = "[" + ", ".join("{" + word + "}" for word in words) + "]"
    return [f"  {name}: {{id: {one.ident}, options: {options}}}"]


def conversion_line(one: Conversion) -> str:
    unit = "" if one.unit is None else f", unit: {quoted(one.unit)}"
    offset = "" if one.offset == 0 else f", offset: {number_text(one.offset)}"
    return f"  conversion-{one.ident}: {{id: {one.ident}, factor: {number_text(one.factor)}{offset}{unit}}}"


def block_line(module: Module) -> str:
    return f'parameterBlock: {{bytes: "{module.block.hex()}"}}'


def text_form(module: Module, choose: random.Random) -> str:
    lines = [f"module: {{type: {MODULE_TYPE}, id: 0x{module.ident:08x}}}", "catalogue:"]
    lines += [f"  {key}: {quoted(value)}" for key, value in CATALOGUE]
    lines += ["component:"] + [f"  {key}: {quoted(value)}" for key, value in COMPONENT]
    taken: set[int] = set()
    lines += ["channels:"] + [channel_line(one, taken) for one in module.channels]
    with_defaults = choose.random() < 0.7
    lines += ["parameters:"] + [parameter_line(module, one, with_defaults, choose) for one in module.parameters]
    if module.option_lists:
        lines.append("optionLists:")
        seen: list[int] = []
        for one in module.option_lists:
            lines += option_list_lines(one, seen.count(one.ident))
            seen.append(one.ident)
    if module.conversions:
        lines += ["conversions:"] + [conversion_line(one) for one in module.conversions]
    sizes = [f"{key}: {quoted(codes)}" for key, codes in data_sizes(module) if key != "Parameter"]
    lines += [block_line(module), "dataSizes: {" + ", ".join(sizes) + "}"]
    return "\n".join(lines) + "\n"
