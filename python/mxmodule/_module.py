"""Modules."""

from __future__ import annotations

import os
from types import MappingProxyType
from typing import Mapping

from . import _arguments
from ._arguments import Bytes, Path, Value
from ._channels import Channels
from ._composition import Composition, assignments_of
from ._configuration import Configuration
from ._description import Description
from ._errors import InputError, wrong_type
from ._findings import Finding, for_terminal
from ._handle import Handle
from ._library import bytes_of, call, text_of
from ._mxmodule import library
from ._parameters import Parameters
from ._rows import Rows, Svg, html_table
from ._values import BinaryObject, Property, Set, binary_object_of, set_of

#: Values of parameters by name, as `Parameters` takes names.
Values = Mapping[str, Value]

_NO_VALUES: Values = MappingProxyType({})


class Module:
    """A module of the kv38 family: what its mx file describes, and the way between named values and
    the bytes that configure it.

    It never changes, owns all that it needs, and may be used by many threads at once.
    """

    __slots__ = ("_description", "_handle", "_channels", "_parameters", "__weakref__")

    def __init__(self, pointer: int) -> None:
        """Owns the mxmodule_module at `pointer`; use `load`, `from_bytes` or `Catalogue.module`."""
        self._handle = Handle(pointer, library.mxmodule_free)
        self._description = Description(self._handle)
        self._channels: Channels | None = None
        self._parameters: Parameters | None = None

    @classmethod
    def load(cls, path: Path, *, input_offset: int = 0, output_offset: int = 0) -> Module:
        """Returns the module of the mx file, or of its text form, at `path`. Its data begins at
        these bytes of the process images.

        Raises `InputError` for a file that cannot be read or is damaged, with its place.
        """
        offsets = _arguments.offsets_argument(input_offset, output_offset)
        return cls(call(library.mxmodule_load, _arguments.path_argument(path), *offsets))

    @classmethod
    def from_bytes(
        cls, data: Bytes, name: str = "<bytes>", *, input_offset: int = 0, output_offset: int = 0
    ) -> Module:
        """Returns the module of `data`, an mx file or its text form, which errors call `name`."""
        content = _arguments.bytes_argument(data, "an mx file")
        called = _arguments.text_argument(name, "name")
        offsets = _arguments.offsets_argument(input_offset, output_offset)
        return cls(call(library.mxmodule_from_bytes, content, len(content), called, *offsets))

    def at(self, *, input_offset: int = 0, output_offset: int = 0) -> Module:
        """Returns the same module with its data at other bytes of the process images."""
        offsets = _arguments.offsets_argument(input_offset, output_offset)
        return type(self)(call(library.mxmodule_at, self._handle, *offsets))

    # What it is.

    @property
    def name(self) -> str:
        """The name of its file, for messages."""
        return os.fsdecode(bytes_of(library.mxmodule_name, self._handle))

    @property
    def label(self) -> str:
        """The label, as on the product."""
        return text_of(library.mxmodule_label, self._handle)

    @property
    def label_bytes(self) -> bytes:
        """The label byte for byte as in the mx file, which states no code page."""
        return bytes.fromhex(self._description.raw_texts()["label"])

    @property
    def module_id(self) -> str:
        """Its identifier, eight hexadecimal digits."""
        return text_of(library.mxmodule_module_id, self._handle)

    @property
    def device_type_id(self) -> str:
        """Such as "kv38.5a030304"."""
        return str(self._description.device()["device_type_id"])

    @property
    def default_image(self) -> bytes:
        """The default raw parameter image, at most 255 bytes."""
        return bytes_of(library.mxmodule_default_image, self._handle)

    @property
    def properties(self) -> Rows[Property]:
        """Its static properties, in the order of the device, like all lists:
        `properties["brandOrderCode"].value`."""
        listed = self._description.device()["properties"]
        rows = [Property(one["id"], one["name"], one["value"]) for one in listed]
        return Rows(rows, Property._fields)

    @property
    def property_bytes(self) -> tuple[bytes, ...]:
        """The values of the properties byte for byte as in the mx file."""
        return tuple(bytes.fromhex(one) for one in self._description.raw_texts()["properties"])

    @property
    def sets(self) -> Rows[Set]:
        """Its sets and roles."""
        return Rows([set_of(one) for one in self._description.device()["sets"]], Set._fields)

    @property
    def binary_objects(self) -> Rows[BinaryObject]:
        """Its binary objects, such as the picture of the product."""
        listed = self._description.device()["binary_objects"]
        return Rows([binary_object_of(one) for one in listed], BinaryObject._fields)

    @property
    def parameters(self) -> Parameters:
        """Its parameters by name, with their defaults."""
        if self._parameters is None:
            self._parameters = Parameters(self._description)
        return self._parameters

    @property
    def channels(self) -> Channels:
        """Its channels in the process images."""
        if self._channels is None:
            self._channels = Channels(self._description)
        return self._channels

    def text(self) -> str:
        """Returns all of it as tables for people, as `mxtool show` prints it."""
        return text_of(library.mxmodule_text, self._handle)

    def json(self) -> str:
        """Returns all of it as JSON, schema "mxtool.device"."""
        return text_of(library.mxmodule_json, self._handle)

    def svg(self) -> Svg:
        """Returns a picture of the process images."""
        return self.channels.svg()

    def datasheet(self) -> str:
        """Returns its data sheet, a page (HTML) that contains all that it shows."""
        return text_of(library.mxmodule_datasheet, self._handle)

    def product_picture(self) -> str:
        """Returns the picture of the product as a URL that contains it
        ("data:image/png;base64,..."); empty if there is none."""
        return text_of(library.mxmodule_product_picture, self._handle)

    # Values.

    def compose(
        self,
        values: Values = _NO_VALUES,
        *,
        image: Bytes | None = None,
        fieldbus: str = "raw",
        force: bool = False,
    ) -> bytes:
        """Writes `values` into the parameter image `image` (None: the default one) and returns what
        a master writes: the raw image, or on the fieldbus "modbus" the registers, each with its
        high byte first.

        All values are checked before the first is written. Raises `RequestError` with everything
        that is not accepted; `force` accepts numbers outside range and options. What a value
        changes besides, and what was rounded, is a `SideEffectWarning`.
        """
        number = _arguments.fieldbus_argument(fieldbus)
        composition = self._composed(values, image, force)
        return composition.bytes(number)

    def compose_file(self, path: Path, *, fieldbus: str = "raw", force: bool = False) -> bytes:
        """Does the same with the values of the file at `path`: YAML, JSON or CSV, as
        `Configuration.values_file`, `json` and `csv` give them."""
        number = _arguments.fieldbus_argument(fieldbus)
        composition = self._composed_of_file(path, force)
        return composition.bytes(number)

    def registers(
        self,
        values: Values | Bytes = _NO_VALUES,
        *,
        image: Bytes | None = None,
        force: bool = False,
    ) -> list[int]:
        """Returns the Modbus registers of an image: with `values` written into it as by `compose`,
        or of the raw image `values`. Raises `Error` if it has no Modbus form."""
        if isinstance(values, (bytes, bytearray, memoryview)):
            if image is not None:
                raise wrong_type("values beside an image", values, "dict")
            return self._composed(_NO_VALUES, values, force).registers()
        return self._composed(values, image, force).registers()

    def configure(
        self,
        values: Values = _NO_VALUES,
        *,
        image: Bytes | None = None,
        fieldbus: str = "raw",
        force: bool = False,
    ) -> Configuration:
        """Returns the image that `compose` makes with the values in it."""
        number = _arguments.fieldbus_argument(fieldbus)
        made = self._composed(values, image, force).image()
        pointer = call(library.mxmodule_configure, self._handle, made, len(made), number)
        return Configuration(self._description, pointer, number)

    def decode(self, data: Bytes, *, fieldbus: str = "raw", place: str = "") -> Configuration:
        """Returns the values in `data`: the raw image, or on the fieldbus "modbus" the registers,
        each with its high byte first. Errors call it `place`.

        Raises `InputError` if it is no configuration of this module.
        """
        number = _arguments.fieldbus_argument(fieldbus)
        content = _arguments.bytes_argument(data, "a configuration")
        argument = _arguments.text_argument(place, "place")
        pointer = call(
            library.mxmodule_decode, self._handle, content, len(content), number, argument
        )
        return Configuration(self._description, pointer, number)

    def _composed(self, values: Values, image: Bytes | None, force: bool) -> Composition:
        assignments = assignments_of(values)
        content = None if image is None else _arguments.bytes_argument(image, "image")
        pointer = call(
            library.mxmodule_compose,
            self._handle,
            assignments,
            len(assignments),
            content,
            0 if content is None else len(content),
            bool(force),
        )
        return Composition(pointer)

    def _composed_of_file(self, path: Path, force: bool) -> Composition:
        name = _arguments.path_argument(path)
        content = _content_of(path)
        pointer = call(
            library.mxmodule_compose_file, self._handle, content, len(content), name, bool(force)
        )
        return Composition(pointer)

    def __repr__(self) -> str:
        return f"<Module {self.module_id} {self.label!r} of {for_terminal(self.name)}>"

    def _repr_html_(self) -> str:
        return html_table(["property", "value"], [one[1:] for one in self.properties])

    def _repr_svg_(self) -> str:
        return self.svg()


def _content_of(path: Path) -> bytes:
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError as failure:
        name = os.fsdecode(path)
        text = f"Cannot open file: {name}: {failure.strerror}"
        raise InputError([Finding("error", "input", name, text, "", (), "")]) from None
