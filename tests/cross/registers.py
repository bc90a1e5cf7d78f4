"""The Modbus registers of a parameter image."""

from __future__ import annotations

from description import BYTE, MODULE, Module, Parameter
from values import read


class NoRegisters(Exception):
    """A parameter without registers for this image."""


def order(module: Module) -> list[Parameter]:
    """Parameters of the module, then those of each channel; hidden channels do not count."""
    listed = [one for one in module.parameters if one.channel == MODULE]
    for channel in shown_channels(module):
        listed += [one for one in module.parameters if one.channel == channel]
    return listed


def shown_channels(module: Module) -> list[int]:
    names: dict[int, str] = {}
    for one in module.channels:
        if one.name is not None:
            names.setdefault(one.number, one.name)
    return [one.number for one in module.channels if names.get(one.number) != "-"]


def left_aligned(module: Module, one: Parameter, image: bytes) -> bytes:
    if one.datatype == BYTE:
        return bytes([read(one, image)])
    return image[one.position:one.position + one.width]


def registers_of(module: Module, one: Parameter, image: bytes) -> bytes:
    if not module.is_usable(one):
        raise NoRegisters(one.name)
    value = left_aligned(module, one, image)
    if one.has_options:
        last_bytes = [number % 256 for number, _ in module.options_of(one)]
        if value[0] not in last_bytes:
            raise NoRegisters(one.name)
        return bytes([last_bytes.index(value[0]), 0])
    return value + b"\x00" * (len(value) % 2)


def registers(module: Module, image: bytes) -> bytes:
    return b"".join(registers_of(module, one, image) for one in order(module))
