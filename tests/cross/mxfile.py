"""The bytes of an mx file, written only from docs/format."""

from __future__ import annotations

import struct

from description import Module, Parameter

CATALOGUE = [("BrandLabelName", "Cross"), ("BrandVersion", "1.0"), ("BrandId", "41"), ("BrandSerialNumber", "0"),
             ("ProductVersion", "01.00.00"), ("BrandOrderCode", "K38"), ("BrandHwRevision", "01")]
COMPONENT = [("Component", "kv38 01")]
MODULE_TYPE = 1
SLOT = 1 << 64


class TextTable:
    """Identifiers from 1 on, in the order of first use; a text that is used twice is stored once."""

    def __init__(self) -> None:
        self.identifiers: dict[str, int] = {}

    def identifier(self, text: str | None) -> int:
        if text is None:
            return 0
        return self.identifiers.setdefault(text, len(self.identifiers) + 1)

    def payload(self) -> bytes:
        records = (struct.pack(">H", ident) + text.encode("cp1252") + b"\r\n"
                   for text, ident in self.identifiers.items())
        return b"\x00\x02" + b"".join(records)


def group(ident: int, payload: bytes) -> bytes:
    return struct.pack(">HH", ident, len(payload) + 6) + payload + b"\x00\x00"


def entries(lines: list[tuple[str, str]]) -> bytes:
    return "".join(f"{key},s={value}\r\n" for key, value in lines).encode("ascii")


def data_sizes(module: Module) -> list[tuple[str, str]]:
    return [("InData", "DD"), ("OutData", "W"), ("Parameter", "B" * len(module.block)), ("Diagnosis", "")]


def option_lists(module: Module, texts: TextTable) -> bytes:
    lists = b""
    for one in module.option_lists:
        lists += bytes([one.ident, len(one.options)])
        for number, text in one.options:
            lists += struct.pack(">QH", number % SLOT, texts.identifier(text))
    return lists


def conversions(module: Module, texts: TextTable) -> bytes:
    return b"".join(struct.pack(">BIIH", one.ident, one.factor, one.offset, texts.identifier(one.unit))
                    for one in module.conversions)


def parameter_record(one: Parameter, texts: TextTable) -> bytes:
    head = struct.pack(">BHBBBBB", one.number, texts.identifier(one.name), (one.position + 4) % 256, one.datatype,
                       one.flags, one.conversion, one.option_list)
    return head + struct.pack(">QQHBBB", one.minimum % SLOT, one.maximum % SLOT, texts.identifier(one.unit), one.bits,
                              one.bit, one.channel)


def channel_names(module: Module, texts: TextTable) -> bytes:
    named = [one for one in module.channels if one.name is not None]
    return b"".join(struct.pack(">BH", one.number, texts.identifier(one.name)) for one in named)


def channel_records(module: Module) -> bytes:
    return b"".join(bytes([one.number, 0x80 * one.is_input + one.kind, 0, one.bits, one.bit, 0, 0])
                    for one in module.channels)


def mx_file(module: Module) -> bytes:
    texts = TextTable()
    lists = option_lists(module, texts)
    tables = conversions(module, texts)
    records = b"".join(parameter_record(one, texts) for one in module.parameters)
    names = channel_names(module, texts)
    identity = struct.pack(">BBBBIH", 0xFB, 5, 0, MODULE_TYPE, module.ident, 0)
    payloads = [(0x0001, identity), (0x0020, entries(CATALOGUE)), (0x0040, entries(COMPONENT)),
                (0x0010, b"\x00\x00" + module.block), (0x0011, entries(data_sizes(module))), (0x20D7, names),
                (0x20C2, tables), (0x20C1, lists), (0x20C0, records), (0x20D0, channel_records(module)),
                (0x20D3, texts.payload())]
    groups = b"".join(group(ident, payload) for ident, payload in payloads if payload)
    return group(0x0000, struct.pack(">HH", len(groups) + 10, 3)) + groups
