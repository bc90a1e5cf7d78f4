"""Uses of the package for the type checker, never run. Lines with "error" must not pass it."""

from __future__ import annotations

import os
from decimal import Decimal
from pathlib import Path
from typing import List, Optional

import mxmodule
from mxmodule import Catalogue, Module, Parameter, Setting, Station

module = Module.load("MX0304.bin", input_offset=4)
module = Module.load(Path("MX0304.bin"))
module = Module.load(b"MX0304.bin")
module = Module.from_bytes(bytearray(), "name")
Module.load(7)  # error
Module.load("MX0304.bin", 4)  # error
Module.load("MX0304.bin", input_offset="4")  # error
Module.from_bytes("text")  # error

image: bytes = module.compose({"Parity": "odd", "Receive timeout": 17})
image = module.compose({"Limit": Decimal("2.5")}, image=memoryview(image), force=True)
registers: List[int] = module.registers({"Limit": 2.5})
registers = module.registers(image)
text: str = module.compose()  # error
module.compose([("Parity", "odd")])  # error
module.compose({"Parity": None})  # error
module.compose({}, fieldbus=1)  # error
module.compose({}, b"")  # error

parameter: Parameter = module.parameters["Parity"]
channel: Optional[int] = parameter.channel
number: int = parameter.channel  # error
parameter.name = "other"  # error
module.parameters["Parity"] = parameter  # error
for name, one in module.parameters.items():
    name.upper()
    one.options[0].text.upper()

setting: Setting = module.decode(image, fieldbus="modbus")["Parity"]
setting.value.upper()
setting.value = "odd"  # error
same: bool = module.configure().compare(module.decode(image)).is_same
module.configure().compare(image)  # error

byte: int = module.channels[0].byte
module.channels[0].bytes  # error
symbols: List[str] = [channel_of.symbol for channel_of in module.channels]
sorted(module.channels[1:3])

with Catalogue.open("sqlite:a.sqlite", create=True) as catalogue:
    catalogue.populate(os.curdir, progress=lambda done, total: print(done / total))
    catalogue.populate(os.curdir, progress=print)
    catalogue.populate(os.curdir, progress=lambda: None)  # error
    entry = catalogue.find("5a030304")
    entry.in_bytes.bit_length()
    catalogue.search("ai", where=["in_bytes>4"])[0].label.upper()
    catalogue.search("ai", where=7)  # error
    catalogue.search("ai", limit=50, after=entry)[0].label.upper()
    catalogue.search("ai", limit="50")  # error
    for each in catalogue.search_each("ai", where=["in_bytes>4"]):
        each.in_bytes.bit_length()
    catalogue.explain("ai", after="5a030304").words[0].upper()
    catalogue.find(0x5A030304)  # error
    catalogue.module("5a030304").compose()

plan = Station.load("pump-house.yaml").plan()
for finding in mxmodule.check("a.bin", Path("b.yaml")):
    finding.rule.upper()
    line: Optional[int] = finding.line
try:
    module.compose()
except mxmodule.RequestError as failure:
    accepted: tuple[str, ...] = failure.accepted
    place: int = failure.place  # error
