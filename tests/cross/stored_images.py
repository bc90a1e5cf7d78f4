"""The meaning of images stored for an older description, when read with the newer one.

The images are those that the old description allows: every parameter at a value that it accepts, the default
block's bits between them. Parameters that share bits, in either description, are looked at together. Their values
are all tried where they are few, else those next to every bound, in every combination that there is time for.
"""

from __future__ import annotations

import itertools
import random
from dataclasses import dataclass

from description import Module, Parameter
from values import Accepted, holds, natural_range, physical, read, write

MOST_VALUES = 256
MOST_IMAGES = 1500
MOST_BASES = 10


@dataclass
class Verdict:
    refused: str = ""       # an image that the new description does not take, and why
    means_other: str = ""   # an image whose bytes mean something else
    every_image: bool = True  # all were tried
    # A refusal is not an error: it may judge each of several values of the same bits separately, or refuse a
    # value at another place that is the same number by chance.
    too_strict: bool = False

    @property
    def valid(self) -> bool:
        return not self.refused and not self.means_other


def is_comparable(old: Module, new: Module) -> bool:
    """Pairs whose verdict follows from the rules: all parameters usable, all defaults accepted."""
    keys = [[(one.name, one.channel) for one in module.parameters] for module in (old, new)]
    numbers = [[one.number for one in module.parameters] for module in (old, new)]
    unique = all(len(set(some)) == len(some) for some in keys + numbers)
    usable = all(module.is_usable(one) for module in (old, new) for one in module.parameters)
    return unique and usable and all(read(one, old.block) in Accepted(old, one) for one in old.parameters)


def same_parameters(old: Module, new: Module) -> list[tuple[Parameter, Parameter]]:
    """Those of one name and channel; of the others those of one number."""
    named = {(one.name, one.channel): one for one in old.parameters}
    pairs = [(named[one.name, one.channel], one) for one in new.parameters if (one.name, one.channel) in named]
    paired = [id(one) for pair in pairs for one in pair]
    numbered = {one.number: one for one in old.parameters if id(one) not in paired}
    return pairs + [(numbered[one.number], one) for one in new.parameters
                    if id(one) not in paired and one.number in numbered]


def meaning(module: Module, one: Parameter, raw: int) -> tuple:
    """The displayed value: a number with its unit; an option by its number."""
    return (physical(module, one, raw),)


def has_other_unit(old: Module, before: Parameter, new: Module, after: Parameter) -> bool:
    return old.unit_of(before) != new.unit_of(after)


def families(old: Module, new: Module) -> list[list[Parameter]]:
    """Parameters of both descriptions that share bits, directly or through others, or that are the same one."""
    groups: list[tuple[set[int], list[Parameter]]] = []
    places = {id(one): one.places() for module in (old, new) for one in module.parameters}
    for before, after in same_parameters(old, new):
        joined = places[id(before)] | places[id(after)]
        places[id(before)] = places[id(after)] = joined
    for one in old.parameters + new.parameters:
        bits, members = places[id(one)], [one]
        apart = []
        for other_bits, others in groups:
            if bits & other_bits:
                bits, members = bits | other_bits, others + members
            else:
                apart.append((other_bits, others))
        groups = apart + [(bits, members)]
    return [members for _, members in groups]


def bounds_nearby(modules: list[tuple[Module, Parameter]]) -> set[int]:
    found = {0, 1, -1}
    for module, one in modules:
        near = Accepted(module, one).bounds() + list(natural_range(one))
        found |= {bound + step for bound in near for step in (-1, 0, 1)}
    return found | {bound + shift for bound in found for shift in (1 << 8, 1 << 16, 1 << 32, 1 << 64)} \
        | {bound - shift for bound in found for shift in (1 << 8, 1 << 16, 1 << 32, 1 << 64)}


def candidates(old: Module, one: Parameter, near: set[int], verdict: Verdict) -> list[int]:
    accepted = Accepted(old, one)
    if accepted.numbers is not None:
        return sorted(accepted.numbers)
    if accepted.count() <= MOST_VALUES:
        return list(range(accepted.low, accepted.high + 1))
    verdict.every_image = False
    return sorted(raw for raw in near if raw in accepted)


def images(old: Module, new: Module, family: list[Parameter], choose: random.Random, verdict: Verdict) -> list[bytes]:
    """Images that the old description allows; of the other families every parameter keeps its default."""
    olds = [one for one in old.parameters if any(one is member for member in family)]
    near = bounds_nearby([(module, one) for module in (old, new) for one in module.parameters
                          if any(one is member for member in family)])
    choices = [candidates(old, one, near, verdict) for one in olds]
    combinations = 1
    for some in choices:
        combinations *= len(some)
    if combinations <= MOST_IMAGES:
        tuples = list(itertools.product(*choices))
    else:
        verdict.every_image = False
        tuples = [tuple(choose.choice(some) for some in choices) for _ in range(MOST_IMAGES)]
    made = [image_with(old, olds, values) for values in tuples]
    bases = [old.block] + choose.sample(made, min(len(made), MOST_BASES))
    made += [image for base in bases for image in images_with_refused_bits(base, old, new, family, choose)]
    return [image for image in made if all(read(one, image) in Accepted(old, one) for one in olds)]


def image_with(old: Module, olds: list[Parameter], values: tuple[int, ...]) -> bytes:
    image = bytearray(old.block)
    for one, raw in zip(olds, values):
        write(one, image, raw)
    return bytes(image)


def images_with_refused_bits(base: bytes, old: Module, new: Module, family: list[Parameter],
                             choose: random.Random) -> list[bytes]:
    """The image `base` with values that the new description refuses: the old one may allow some of them.

    Only bits of old parameters change: the others are those of the default block in every image.
    """
    made = []
    places = set().union(*(one.places() for one in old.parameters))
    for one in new.parameters:
        if not any(one is member for member in family) or one.position + one.width > len(old.block):
            continue
        accepted = Accepted(new, one)
        low, high = natural_range(one)
        values = {bound + step for bound in accepted.bounds() for step in (-1, 1)} | {low, high, 0}
        values |= {choose.randint(low, high) for _ in range(20)}
        for raw in values:
            if holds(one, raw) and raw not in accepted:
                image = bytearray(base)
                write(one, image, raw)
                if all(bit in places for bit in differing_bits(old.block, image)):
                    made.append(bytes(image))
    return made


def differing_bits(one: bytes, other: bytes) -> list[int]:
    return [8 * at + bit for at in range(len(one)) for bit in range(8) if (one[at] ^ other[at]) >> bit & 1]


def judge(old: Module, new: Module, choose: random.Random) -> Verdict:
    verdict = Verdict()
    if len(old.block) != len(new.block):
        verdict.refused = f"{len(old.block)} bytes, {len(new.block)} expected"
        return verdict
    verdict.too_strict = sum(len(one.places()) for one in old.parameters) != len(
        set().union(*(one.places() for one in old.parameters)))
    pairs = same_parameters(old, new)
    verdict.too_strict |= any(before.lowest_bit != after.lowest_bit for before, after in pairs)
    for before, after in pairs:
        if has_other_unit(old, before, new, after):
            verdict.means_other = f"{before.name!r}: another unit"
    for family in families(old, new):
        for image in images(old, new, family, choose, verdict):
            judge_image(old, new, family, pairs, image, verdict)
            if verdict.refused:
                return verdict
    # Overlapping values have too many combinations for a sample to be conclusive.
    verdict.too_strict |= not verdict.every_image and any(
        one.places() & other.places() and one.places() != other.places()
        for one in new.parameters for other in old.parameters)
    return verdict


def judge_image(old: Module, new: Module, family: list[Parameter], pairs: list[tuple[Parameter, Parameter]],
                image: bytes, verdict: Verdict) -> None:
    for one in new.parameters:
        if any(one is member for member in family) and read(one, image) not in Accepted(new, one):
            verdict.refused = f"{image.hex(' ')}: {one.name!r} is {read(one, image)}"
    for before, after in pairs:
        if any(before is member for member in family) and not verdict.means_other:
            was, means = meaning(old, before, read(before, image)), meaning(new, after, read(after, image))
            if was != means:
                verdict.means_other = f"{image.hex(' ')}: {after.name!r} was {was}, is {means}"
