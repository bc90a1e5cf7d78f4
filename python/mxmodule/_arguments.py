"""Arguments of callers as the C interface takes them."""

from __future__ import annotations

import operator
import os
from decimal import Decimal
from typing import SupportsIndex, Union

from ._errors import RequestError, request_finding, wrong_type

#: A value of a parameter: the text of an option, or a number with or without its unit.
Value = Union[str, SupportsIndex, float, Decimal]
#: A path of a file.
Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
#: Bytes of any kind.
Bytes = Union[bytes, bytearray, memoryview]

MOST_OFFSET = 2**32 - 1

# More than any float has. A Decimal of a few characters may have millions.
_MOST_DIGITS = 400
_MOST_BITS = 1328  # all numbers of so many bits have at most 400 digits


def _without_nul(content: bytes, what: str) -> bytes:
    if b"\0" in content:
        text = f"Found a NUL character in {what} {content!r}, expected none"
        raise RequestError([request_finding(text, place=what)])
    return content


def text_argument(text: str, what: str) -> bytes:
    """Returns `text`, which is `what`, as UTF-8. Raises `WrongType`, or `RequestError` for a text
    that has no UTF-8."""
    if not isinstance(text, str):
        raise wrong_type(what, text, "str")
    try:
        return _without_nul(text.encode("utf-8"), what)
    except UnicodeEncodeError:
        finding = request_finding(f"{what} {text!r} is no text", place=what)
        raise RequestError([finding]) from None


def path_argument(path: Path) -> bytes:
    """Returns `path` as the system takes it. Raises `WrongType`, or `RequestError` for a text that
    is no path."""
    try:
        return _without_nul(os.fsencode(path), "the path")
    except TypeError:
        raise wrong_type("the path", path, "str", "bytes", "os.PathLike") from None
    except UnicodeEncodeError:
        finding = request_finding(f"Found {path!r}, expected a text", place="the path")
        raise RequestError([finding]) from None


def bytes_argument(data: Bytes, what: str) -> bytes:
    """Returns `data`, which is `what`. Raises `WrongType`, or `RequestError` for a released
    memoryview."""
    if isinstance(data, bytes):
        return data
    if isinstance(data, (bytearray, memoryview)):
        try:
            return bytes(data)
        except ValueError as failure:
            text = f"Found a memoryview without content: {failure}"
            raise RequestError([request_finding(text, place=what)]) from None
    raise wrong_type(what, data, "bytes", "bytearray", "memoryview")


def value_argument(value: Value, name: str) -> bytes:
    """Returns `value` of the parameter called `name` as a text.

    Numbers are written with all digits and a point. Raises `WrongType` for another type, also for
    `bool`, of which nothing says whether it means a number or an option.
    """
    if isinstance(value, str):
        return text_argument(value, f"the value of {name}")
    number = _number(value, name)
    if not number.is_finite():
        text = f"Found {value} for {name}, expected a finite number"
        raise RequestError([request_finding(text, place=name)])
    _, digits, exponent = number.as_tuple()
    if max(len(digits), abs(int(exponent))) > _MOST_DIGITS:
        raise _too_many_digits(name)
    return format(number, "f").encode("ascii")


def _too_many_digits(name: str) -> RequestError:
    text = f"Found a number with too many digits for {name}, expected {_MOST_DIGITS} at most"
    return RequestError([request_finding(text, place=name)])


def _number(value: SupportsIndex | float | Decimal, name: str) -> Decimal:
    if isinstance(value, Decimal):
        return value
    if isinstance(value, float):
        return Decimal(repr(float(value)))
    what = f"the value of {name}"
    whole = whole_argument(value, what, "str", "float", "Decimal", place=name)
    if whole.bit_length() > _MOST_BITS:  # the digits of enormous numbers take minutes
        raise _too_many_digits(name)
    return Decimal(whole)


def whole_argument(value: SupportsIndex, what: str, *others: str, place: str = "") -> int:
    """Returns `value`, which is `what`, an int or a number like those of data frames. Raises
    `WrongType`, which also names the types `others`."""
    try:
        if not isinstance(value, bool):
            return operator.index(value)
    except TypeError:
        pass
    raise wrong_type(what, value, *others, "int", place=place)


def offset_argument(offset: SupportsIndex, what: str) -> int:
    """Returns `offset`, in bytes. Raises `WrongType`, or `RequestError` for one below 0 or above
    2**32 - 1."""
    number = whole_argument(offset, what)
    if not 0 <= number <= MOST_OFFSET:
        text = f"Found {_shown(number)} for {what}, expected 0 to {MOST_OFFSET}"
        finding = request_finding(text, place=what, accepted=[f"0 to {MOST_OFFSET}"])
        raise RequestError([finding])
    return number


def offsets_argument(input_offset: int, output_offset: int) -> tuple[int, int]:
    """Returns where the data of a module begins in the process images, in bytes."""
    return (
        offset_argument(input_offset, "input_offset"),
        offset_argument(output_offset, "output_offset"),
    )


def _shown(number: int) -> str:
    # Python refuses to write the digits of enormous numbers.
    return str(number) if abs(number) < 2**128 else "an enormous number"


def choice_argument(choice: str, what: str, choices: tuple[str, ...]) -> int:
    """Returns the position of `choice`, which is `what`, in `choices`. Raises `WrongType` or
    `RequestError`."""
    if not isinstance(choice, str):
        raise wrong_type(what, choice, "str")
    if choice not in choices:
        expected = " or ".join(f'"{one}"' for one in choices)
        text = f'Found "{choice}" for {what}, expected {expected}'
        raise RequestError([request_finding(text, place=what, accepted=choices)])
    return choices.index(choice)


FIELDBUSES = ("raw", "modbus")
SEPARATORS = (",", ";", "\t")


def fieldbus_argument(fieldbus: str) -> int:
    """Returns the number of `fieldbus`, "raw" or "modbus"."""
    return choice_argument(fieldbus, "fieldbus", FIELDBUSES)


def separator_argument(separator: str) -> bytes:
    """Returns the separator of CSV: a comma, a semicolon or a tab."""
    choice_argument(separator, "separator", SEPARATORS)
    return separator.encode("ascii")
