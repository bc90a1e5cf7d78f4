"""Arguments of --set: names and values that can be read in only one way."""

from __future__ import annotations

import random
import re
from fractions import Fraction

from description import MODULE, Module, Parameter
from values import Accepted, holds, natural_range, nearest, options, physical, read

FIRST_ID = 16  # of the parameters: the static properties of a module without extension come before them
GLUED_UNITS = {"V", "mA", "°C", "%", "m/s", "µm"}
WITHOUT_EXPONENT = (Fraction(1, 10 ** 12), Fraction(10 ** 22))


def identifier(module: Module, one: Parameter) -> str:
    return f"#{FIRST_ID + next(n for n, other in enumerate(module.parameters) if other is one)}"


def channel_words(module: Module, number: int) -> set[str]:
    """The words before the slash that mean this channel."""
    if number == MODULE:
        return {"module"}
    return {str(number)} | channel_words_by_name(module, number)


def channel_words_by_name(module: Module, number: int) -> set[str]:
    found = [one.name for one in module.channels if one.number == number and one.name is not None]
    name = found[0] if found else f"channel_{number}"
    if not any(one.number == number for one in module.channels) or name == "-":
        return set()
    return {name, f"{number} {name}"}


def references(module: Module, word: str) -> list[Parameter]:
    """Every parameter that a word before "=" can mean."""
    found = []
    for one in module.parameters:
        long_names = {f"{channel}/{one.name}" for channel in channel_words(module, one.channel)}
        long_names |= {f"{one.channel}/{one.name}"}
        if word == identifier(module, one) or word == one.name or word in long_names:
            found.append(one)
    return found


def readings(module: Module, assignment: str) -> list[tuple[Parameter, str]]:
    cuts = [at for at, character in enumerate(assignment) if character == "="]
    return [(one, assignment[at + 1:]) for at in cuts for one in references(module, assignment[:at])]


def assignment(module: Module, one: Parameter, value: str, choose: random.Random) -> str:
    """NAME=VALUE in a form that means only this parameter."""
    words = [one.name] + [f"{channel}/{one.name}" for channel in sorted(channel_words(module, one.channel))]
    word = choose.choice(words)
    sure = f"{word}={value}"
    unmistakable = len(readings(module, sure)) == 1 and not word.startswith("#")
    return sure if unmistakable and choose.random() < 0.8 else f"{identifier(module, one)}={value}"


def means_two(module: Module, words: str) -> bool | None:
    """Whether two parameters accept their value in NAME=VALUE; None if a name alone is ambiguous."""
    found = readings(module, words)
    texts = [text for _, text in found]
    if len(set(texts)) != len(texts) or words.startswith("#") or any(may_be_number(*one) for one in found):
        return None
    fitting = [one for one, text in found if is_accepted(module, one, text)]
    return len(fitting) > 1 if fitting else None


def may_be_number(one: Parameter, text: str) -> bool:
    """Physical values, numbers with their units and "#N": these have other checks."""
    return one.converted or text.startswith("#") or (not one.has_options and re.fullmatch("-?[0-9]+", text) is None)


def is_accepted(module: Module, one: Parameter, text: str) -> bool:
    """Whether a plain number or the text of an option is a value of the parameter."""
    if one.has_options:
        texts = {its_text for _, its_text in options(module, one)}
        if module.lies_in_image(one) and text == str(read(one, module.block)) and text not in texts:
            return True  # what it has already
        fitting = {number for number, its_text in options(module, one) if text in (its_text, str(number))}
        return len(fitting) == 1 and fitting.pop() in Accepted(module, one)
    return not one.converted and re.fullmatch("-?[0-9]+", text) is not None and int(text) in Accepted(module, one)


def rounded(value: Fraction, digits: int) -> Fraction:
    """Rounds to this number of significant decimal digits."""
    if value == 0:
        return value
    exponent = len(str(abs(value.numerator))) - len(str(value.denominator))
    scale = Fraction(10) ** (digits - exponent)
    return Fraction(round(value * scale)) / scale


def decimal_text(value: Fraction) -> str:
    """A decimal fraction in digits, with an exponent where it is very small or very large."""
    exponent = 0
    scaled = value
    while scaled.denominator != 1:
        scaled, exponent = scaled * 10, exponent - 1
    digits = str(abs(scaled.numerator))
    sign = "-" if value < 0 else ""
    if value and not WITHOUT_EXPONENT[0] < abs(value) < WITHOUT_EXPONENT[1]:
        stripped = digits.rstrip("0")
        exponent += len(digits) - len(stripped)
        return f"{sign}{stripped}e{exponent}"
    if exponent == 0:
        return sign + digits
    digits = digits.rjust(1 - exponent, "0")
    return f"{sign}{digits[:exponent]}.{digits[exponent:]}"


def physical_text(module: Module, one: Parameter, raw: int, choose: random.Random) -> str | None:
    """Digits to which only this raw value is the nearest; None if none were found."""
    value = physical(module, one, raw)
    enough = [digits for digits in range(1, 60)
              if nearest(module, one, rounded(value, digits)) == {raw}]
    if not enough:
        return None
    return decimal_text(rounded(value, enough[min(choose.choice([0, 0, 1, 5]), len(enough) - 1)]))


def option_text(module: Module, one: Parameter, raw: int, choose: random.Random) -> str:
    listed = options(module, one)
    texts = [text for number, text in listed if number == raw and is_unmistakable(listed, number, text)]
    if texts and choose.random() < 0.6:
        return choose.choice(texts)
    return f"#{raw}"


def is_unmistakable(listed: list[tuple[int, str]], number: int, text: str) -> bool:
    """A text of only one option that is not the number of another one."""
    alike = {other for other, its_text in listed if its_text.strip().lower() == text.strip().lower()}
    as_number = [other for other, _ in listed if str(other) == text.strip() and other != number]
    return alike == {number} and not as_number and not text.startswith("#")


def value_text(module: Module, one: Parameter, raw: int, choose: random.Random) -> str | None:
    if one.has_options:
        return option_text(module, one, raw, choose)
    text = physical_text(module, one, raw, choose) if one.converted else str(raw)
    unit = module.unit_of(one)
    if text is None or unit == "" or choose.random() < 0.5:
        return text
    return text + unit if unit in GLUED_UNITS and choose.random() < 0.5 else f"{text} {unit}"


def good_values(module: Module, one: Parameter, choose: random.Random) -> list[int]:
    accepted = Accepted(module, one)
    if not accepted.count():
        return []
    if accepted.numbers is not None:
        return sorted(accepted.numbers)
    inside = [accepted.low, accepted.high, choose.randint(accepted.low, accepted.high)]
    near = [raw for raw in (0, 1, -1, accepted.low + 1, accepted.high - 1) if raw in accepted]
    return inside + near


def refused_values(module: Module, one: Parameter) -> list[int]:
    """Raw values next to those that are accepted; some of them the parameter cannot hold at all."""
    accepted = Accepted(module, one)
    beyond = [bound + step for bound in accepted.bounds() for step in (-1, 1)]
    return [raw for raw in beyond + list(natural_range(one)) if raw not in accepted and raw != read(one, module.block)]
