"""Any number of different modules, made of the examples."""
from __future__ import annotations

import pathlib
import re
from typing import Dict, List

IDENTITY = re.compile(rb"\xfb\x05\x00.(....)", re.DOTALL)


def examples(binaries: pathlib.Path) -> List[pathlib.Path]:
    """Returns the mx files that are built beside the programs in `binaries`, all translatable."""
    files = (binaries.parent / "examples/modules").glob("MX*.bin")
    return sorted(path for path in files if path.name != "MX9999.bin")


def generate(originals: List[pathlib.Path], folder: pathlib.Path, count: int, state: str,
             first: int = 0x10000000) -> None:
    """Makes `count` modules in the new `folder`: originals with identifiers from `first` on.

    `state`, one digit, is in the serial number: the modules of another state have the same
    identifiers and other bytes.
    """
    folder.mkdir(parents=True)
    for number in range(count):
        original = originals[number % len(originals)].read_bytes()
        identity = IDENTITY.search(original)
        if identity is None:
            raise ValueError(f"{originals[number % len(originals)]} states no module")
        place = identity.start(1)
        module = (first + number).to_bytes(4, "big")
        mx = original[:place] + module + original[place + 4:]
        mx = mx.replace(b"BrandSerialNumber,s=0", b"BrandSerialNumber,s=" + state.encode(), 1)
        (folder / f"MX{module.hex()}.bin").write_bytes(mx)


def contents(folder: pathlib.Path) -> Dict[str, bytes]:
    """Returns the bytes of the mx files in `folder` by their names."""
    return {path.name: path.read_bytes() for path in folder.glob("MX*.bin")}
