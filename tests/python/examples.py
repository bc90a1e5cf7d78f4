"""The example modules of the build, and modules made of a few lines of their text form."""

from __future__ import annotations

import functools
import os
import pathlib

from mxmodule import Module

BUILD = pathlib.Path(os.environ["MX_BUILD"])
PROJECT = pathlib.Path(__file__).resolve().parents[2]
FOLDER = BUILD / "examples" / "modules"
PUMP_HOUSE = PROJECT / "examples" / "stations" / "pump-house.yaml"
MXTOOL = BUILD / "bin" / "mxtool"

# The runtime of a sanitizer is for Python alone: other programs have their own, or none.
_PRELOAD = os.environ.pop("LD_PRELOAD", "")

#: Whether the libraries contain AddressSanitizer.
SANITIZED = "libclang_rt.asan" in _PRELOAD

#: What every text form needs beside its channels and parameters.
_HEAD = """\
module: {{type: 3, id: 0x5a0fff01}}
catalogue:
  BrandId: "41"
  BrandLabelName: {label}
  BrandVersion: "2.1"
  BrandSerialNumber: "0"
  ProductVersion: "01.00.00"
  BrandOrderCode: K38-1
  BrandHwRevision: "01"
component: {{Component: kv38 01.00.00, Creator: mx 3}}
"""


def python_environment(**variables: str) -> dict[str, str]:
    """Returns the environment of another Python that takes the libraries of the build."""
    return {**os.environ, "LD_PRELOAD": _PRELOAD, **variables}


def path_of(name: str) -> str:
    """Returns the path of the example `name`, such as "MX0304"."""
    return str(FOLDER / f"{name}.bin")


def content_of(name: str) -> bytes:
    """Returns the mx file of the example `name`."""
    return pathlib.Path(path_of(name)).read_bytes()


@functools.lru_cache(maxsize=None)
def example(name: str) -> Module:
    """Returns the module of the example `name`."""
    return Module.load(path_of(name))


def readable_paths() -> list[str]:
    """Returns the paths of all examples except for MX9999, which is damaged."""
    paths = sorted(str(path) for path in FOLDER.glob("*.bin"))
    return [path for path in paths if not path.endswith("MX9999.bin")]


def text_form(lines: str = "", label: str = "Test module") -> bytes:
    """Returns the text form of a module; `lines` are its channels, parameters and lists. `label` is
    a YAML scalar."""
    return (_HEAD.format(label=label) + lines).encode("utf-8")


def module_of(lines: str = "", label: str = "Test module") -> Module:
    """Returns the module of such a text form."""
    return Module.from_bytes(text_form(lines, label), "test.yaml")
