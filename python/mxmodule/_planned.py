"""What a plan consists of, as plain values."""

from __future__ import annotations

from typing import Any, NamedTuple, Optional, Tuple

from ._findings import Finding


class ImageBytes(NamedTuple):
    """Bytes of a process image.

    - `offset`: address of the first.
    - `size`: number of bytes.
    """

    offset: int
    size: int


class PlannedModule(NamedTuple):
    """A module with its place in the process images.

    - `position`: in the row, from 1; reserved places do not count.
    - `name`: unique in the station.
    - `module_id`: eight hexadecimal digits.
    - `label`: as on the product.
    - `reference`: identifier or path as in the station.
    - `device_type_id`: such as "kv38.5a030304".
    - `input`: its data in the input image.
    - `output`: its data in the output image.
    - `parameter_bytes`: size of its parameter image.
    - `registers`: number of its Modbus registers; None: it has no Modbus form.
    """

    position: int
    name: str
    module_id: str
    label: str
    reference: str
    device_type_id: str
    input: ImageBytes
    output: ImageBytes
    parameter_bytes: int
    registers: Optional[int]

    @property
    def input_offset(self) -> int:
        """Address of its first byte in the input image."""
        return self.input.offset

    @property
    def input_size(self) -> int:
        """Number of its bytes in the input image."""
        return self.input.size

    @property
    def output_offset(self) -> int:
        """Address of its first byte in the output image."""
        return self.output.offset

    @property
    def output_size(self) -> int:
        """Number of its bytes in the output image."""
        return self.output.size


class Gap(NamedTuple):
    """Bits of a process image that belong to no channel.

    - `image`: "in" or "out".
    - `reason`: "padding", "reserved", "status" or "no channel".
    - `offset`: of its first byte.
    - `size`: the bytes that it touches.
    - `bit`: its first bit in the first byte.
    - `bits`: number of bits.
    - `module`: position of the module that they belong to; None: of none.
    - `name`: of a reserved place; may be empty.
    """

    image: str
    reason: str
    offset: int
    size: int
    bit: int
    bits: int
    module: Optional[int]
    name: str


class Declarations(str):
    """Declarations of the channels for a program."""

    #: A warning for each channel, or bit of one, that is only a comment, with the reason.
    findings: Tuple[Finding, ...]


def bytes_of_image(values: Any) -> ImageBytes:
    """Returns the bytes in `values`, of the schema "mxtool.station"."""
    return ImageBytes(values["offset"], values["size"])


def planned_module(values: Any) -> PlannedModule:
    """Returns the module in `values`, of the schema "mxtool.station"."""
    return PlannedModule(
        values["position"],
        values["name"],
        values["module_id"],
        values["label"],
        values["reference"],
        values["device_type_id"],
        bytes_of_image(values["in"]),
        bytes_of_image(values["out"]),
        values["parameters"]["size"],
        values["parameters"]["registers"],
    )


#: Of tables: a column for each number.
MODULE_COLUMNS = (
    "position",
    "name",
    "module_id",
    "label",
    "reference",
    "input_offset",
    "input_size",
    "output_offset",
    "output_size",
    "parameter_bytes",
    "registers",
)
