"""What a module consists of, as plain values."""

from __future__ import annotations

from typing import Any, NamedTuple


class Property(NamedTuple):
    """A static property of a module.

    - `id`: identifier in the device, decimal.
    - `name`: such as "moduleId".
    - `value`: as text.
    """

    id: str
    name: str
    value: str


class Option(NamedTuple):
    """An option of a parameter.

    - `text`: as shown.
    - `value`: the number, decimal.
    - `is_current`: the parameter has this value by default.
    - `call_text`: selects it in `Module.compose`: its text, or "#" and its number.
    """

    text: str
    value: str
    is_current: bool
    call_text: str


class Place(NamedTuple):
    """Where a value is in the raw parameter image.

    - `byte`: first byte.
    - `size`: number of bytes, big-endian.
    - `bit_offset`: lowest bit of a bit field.
    - `bit_length`: number of bits of a bit field; 0: whole bytes.
    """

    byte: int
    size: int
    bit_offset: int
    bit_length: int


class Set(NamedTuple):
    """A set or role: attributes of the module that belong together.

    - `id`: identifier in the device, decimal.
    - `name`: such as "channels".
    - `kind`: "set" or "role".
    - `members`: identifiers of properties, channels, parameters, sets.
    """

    id: str
    name: str
    kind: str
    members: tuple[str, ...]


class BinaryObject(NamedTuple):
    """A binary object, such as the picture of the product.

    - `id`: identifier in the device, decimal.
    - `name`: such as "productImage".
    - `mime_type`: such as "image/svgz".
    - `encoding`: of `data`: "base64".
    - `data`: the content, encoded; `content` has its bytes.
    """

    id: str
    name: str
    mime_type: str
    encoding: str
    data: str

    @property
    def content(self) -> bytes:
        """The bytes of the object."""
        from base64 import b64decode

        return b64decode(self.data)


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
