"""What a module consists of, as plain values."""

from __future__ import annotations

from typing import Any, NamedTuple


class Property(NamedTuple):
    """A static property of a module."""

    id: str  #: Identifier in the device, decimal.
    name: str  #: Such as "moduleId".
    value: str  #: As text.


class Option(NamedTuple):
    """An option of a parameter."""

    text: str  #: As shown.
    value: str  #: The number, decimal.
    is_current: bool  #: The parameter has this value by default.
    call_text: str  #: Selects it in `Module.compose`: its text, or "#" and its number.


class Place(NamedTuple):
    """Where a value is in the raw parameter image."""

    byte: int  #: First byte.
    size: int  #: Number of bytes, big-endian.
    bit_offset: int  #: Lowest bit of a bit field.
    bit_length: int  #: Number of bits of a bit field; 0: whole bytes.


class Set(NamedTuple):
    """A set or role: attributes of the module that belong together."""

    id: str  #: Identifier in the device, decimal.
    name: str  #: Such as "channels".
    kind: str  #: "set" or "role".
    members: tuple[str, ...]  #: Identifiers of properties, channels, parameters, sets.


class BinaryObject(NamedTuple):
    """A binary object, such as the picture of the product."""

    id: str  #: Identifier in the device, decimal.
    name: str  #: Such as "productImage".
    mime_type: str  #: Such as "image/svgz".
    encoding: str  #: Of `data`: "base64".
    data: str  #: The content.


def option_of(values: Any) -> Option:
    """Returns the option in `values`, of the schema "mxtool.device"."""
    return Option(values["text"], values["value"], values["current"], values["call_text"])


def place_of(values: Any) -> Place:
    """Returns the place in `values`, of the schema "mxtool.device"."""
    return Place(
        values["byte_offset"], values["data_size"], values["bit_offset"], values["bit_length"]
    )


def set_of(values: Any) -> Set:
    """Returns the set in `values`, of the schema "mxtool.device"."""
    return Set(values["id"], values["name"], values["kind"], tuple(values["members"]))


def binary_object_of(values: Any) -> BinaryObject:
    """Returns the binary object in `values`, of the schema "mxtool.device"."""
    return BinaryObject(
        values["id"], values["name"], values["mime_type"], values["encoding"], values["data"]
    )
