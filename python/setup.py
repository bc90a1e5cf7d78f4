"""The version, which the project states in one place, and the tag of a wheel with libraries."""

from __future__ import annotations

import pathlib
import re
from typing import Tuple

from setuptools import Distribution, setup
from wheel.bdist_wheel import bdist_wheel

FOLDER = pathlib.Path(__file__).resolve().parent


def version() -> str:
    """The version of the project, from its CMakeLists.txt."""
    text = (FOLDER.parent / "CMakeLists.txt").read_text(encoding="utf-8")
    found = re.search(r"^project\(\s*\S+\s+VERSION\s+([0-9.]+)", text, re.MULTILINE)
    if not found:
        raise SystemExit(f"{FOLDER.parent}/CMakeLists.txt: project(... VERSION ...) is missing")
    return found.group(1)


class Contents(Distribution):
    """The package, with its shared libraries if they are in its folder."""

    def has_ext_modules(self) -> bool:
        """Whether the wheel is for one platform alone."""
        return (FOLDER / "mxmodule" / "_libraries").is_dir()


class Wheel(bdist_wheel):
    """A wheel for every Python 3: no library in it depends on that of Python."""

    def get_tag(self) -> Tuple[str, str, str]:
        """Python, its binary interface, platform."""
        return ("py3", "none", super().get_tag()[2])


setup(version=version(), distclass=Contents, cmdclass={"bdist_wheel": Wheel})
