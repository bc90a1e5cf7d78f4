"""A newer version of a module: the old one with a change or two."""

from __future__ import annotations

import random

from description import BYTE, SINT8, SINT16, SINT32, SINT64, UINT8, UINT16, UINT32, UINT64, Module, Parameter
from generate import UNITS, conversion, limit, option_list, parameter
from values import Accepted, natural_range, write

SAME_WIDTH = {UINT8: [SINT8, BYTE], SINT8: [UINT8, BYTE], BYTE: [UINT8, SINT8], UINT16: [SINT16], SINT16: [UINT16],
              UINT32: [SINT32], SINT32: [UINT32], UINT64: [SINT64], SINT64: [UINT64]}


def another_range(choose: random.Random, module: Module, one: Parameter) -> None:
    one.minimum = one.maximum = 0
    limit(choose, one)


def narrower_range(choose: random.Random, module: Module, one: Parameter) -> None:
    accepted = Accepted(module, one)
    if accepted.numbers is None and accepted.count() > 1:
        one.minimum, one.maximum = accepted.low + choose.randint(0, 1), accepted.high - choose.randint(0, 1)
        if one.minimum > one.maximum:
            one.minimum = one.maximum


def another_type(choose: random.Random, module: Module, one: Parameter) -> None:
    one.datatype = choose.choice(SAME_WIDTH[one.datatype])
    one.bits, one.bit = (choose.choice([0, 8]), 0) if one.datatype == BYTE else (0, 0)
    low, high = natural_range(one)
    one.minimum, one.maximum = max(one.minimum, low), min(one.maximum, high)


def other_bits(choose: random.Random, module: Module, one: Parameter) -> None:
    if one.datatype == BYTE:
        one.bits = choose.randint(1, 8)
        one.bit = choose.randint(0, 8 - one.bits)


def moved(choose: random.Random, module: Module, one: Parameter) -> None:
    one.position = choose.randint(0, max(len(module.block) - one.width, 0))


def gone(choose: random.Random, module: Module, one: Parameter) -> None:
    if len(module.parameters) > 1:
        module.parameters.remove(one)


def into_a_gap(choose: random.Random, module: Module, one: Parameter) -> None:
    """Moves to bits that no parameter takes, whole bytes or the rest of one."""
    taken = set().union(*(other.places() for other in module.parameters))
    gaps = [bit for bit in range(8 * len(module.block)) if bit not in taken]
    if gaps:
        at = choose.choice(gaps)
        one.position, one.datatype, one.bit, one.bits = at // 8, BYTE, at % 8, 1
        if not taken & set(range(at - at % 8, at - at % 8 + 8)) and choose.random() < 0.5:
            one.datatype, one.bit, one.bits = choose.choice([UINT8, SINT8]), 0, 0


def added(choose: random.Random, module: Module, one: Parameter) -> None:
    numbers = [other.number for other in module.parameters]
    new = parameter(choose, module, choose.choice([other for other in range(200, 210) if other not in numbers]))
    new.name = f"New {new.number}"
    new.datatype = choose.choice([one.datatype, BYTE, UINT8, UINT16])
    new.position, new.bits, new.bit = one.position, one.bits, one.bit
    where = choose.random()
    if where < 0.4:
        moved(choose, module, new)
    elif where < 0.7:
        into_a_gap(choose, module, new)
    if where < 0.4 and new.datatype == BYTE and choose.random() < 0.7:
        other_bits(choose, module, new)
    if new.option_list == 0:
        limit(choose, new)
    module.parameters.insert(choose.randint(0, len(module.parameters)), new)


def another_option(choose: random.Random, module: Module, one: Parameter) -> None:
    if not module.option_lists:
        return
    options = choose.choice(module.option_lists).options
    change = choose.randint(0, 2)
    if change == 0 and len(options) > 1:
        options.pop(choose.randrange(len(options)))
    elif change == 1:
        options.append((choose.choice([0, 1, 6, 200, 300]), "new"))
    else:
        at = choose.randrange(len(options))
        options[at] = (options[at][0], "another text")


def range_to_options(choose: random.Random, module: Module, one: Parameter) -> None:
    accepted = Accepted(module, one)
    if accepted.numbers is None and not one.converted and accepted.count() <= 12:
        new = option_list(choose, 50)
        new.options = [(raw, f"option {raw}") for raw in range(accepted.low, accepted.high + 1)]
        module.option_lists.append(new)
        one.option_list, one.minimum, one.maximum = 50, 0, 0


def options_to_range(choose: random.Random, module: Module, one: Parameter) -> None:
    accepted = Accepted(module, one)
    if accepted.numbers:
        one.option_list, one.minimum, one.maximum = 0, min(accepted.numbers), max(accepted.numbers)


def another_conversion(choose: random.Random, module: Module, one: Parameter) -> None:
    if not module.conversions:
        return
    changed = choose.choice(module.conversions)
    fresh = conversion(choose, changed.ident)
    what = choose.randint(0, 3)
    changed.factor = fresh.factor if what == 0 else changed.factor
    changed.offset = fresh.offset if what == 1 else changed.offset
    changed.unit = fresh.unit if what == 2 else changed.unit
    if what == 3:
        one.flags ^= 4


def another_unit(choose: random.Random, module: Module, one: Parameter) -> None:
    one.unit = choose.choice(UNITS + [None])


def plain_change(choose: random.Random, module: Module, one: Parameter) -> None:
    """Changes without a change of meaning: name, number, host's flags."""
    if choose.random() < 0.5:
        one.flags ^= choose.randint(0, 3)
    else:
        one.name = f"Renamed {choose.randint(0, 9)}"


def another_default(choose: random.Random, module: Module, one: Parameter) -> None:
    accepted = Accepted(module, one)
    if module.is_usable(one) and accepted.count():
        image = bytearray(module.block)
        write(one, image, choose.choice(accepted.bounds()))
        module.block = bytes(image)


def other_gaps(choose: random.Random, module: Module, one: Parameter) -> None:
    """Another size, or other bytes where there is no parameter."""
    change = choose.randint(0, 2)
    if change == 0 and len(module.block) > 1:
        module.block = module.block[:-1]
    elif change == 1:
        module.block += b"\x01"
    else:
        at = choose.randrange(len(module.block))
        module.block = module.block[:at] + choose.randbytes(1) + module.block[at + 1:]


CHANGES = [another_range, narrower_range, another_type, other_bits, moved, gone, added, added, added, another_option,
           range_to_options, options_to_range, another_conversion, another_unit, plain_change, another_default,
           other_gaps]


def comparable(module: Module) -> Module:
    """The module without parameters for which the verdict is open: unusable ones, and those of equal names."""
    old = module.copy()
    old.parameters = [one for one in old.parameters if old.is_usable(one)]
    for one in old.parameters:
        one.name = f"{one.name} {one.number}"
    return old


def newer(choose: random.Random, old: Module) -> Module:
    new = old.copy()
    for _ in range(choose.choice([0, 1, 1, 1, 2])):
        if new.block:
            choose.choice(CHANGES)(choose, new, choose.choice(new.parameters))
    return new
