"""The licences of the libraries in a wheel, from Debian's copyright files."""

from __future__ import annotations

import pathlib
import re
import subprocess
from typing import Dict, List

# Templates that are compiled into the libraries: no file of the wheel shows them.
COMPILED_IN = ["nlohmann-json3-dev"]
# The licences that copyright files state in prose.
IN_PROSE = {"libpcre3": "BSD-3-clause"}
DOCUMENTS = pathlib.Path("/usr/share/doc")
COMMON = pathlib.Path("/usr/share/common-licenses")

INTRODUCTION = """\
The folder of this file contains the libraries of mxmodule, whose terms of use are in the file
"copyright" next to METADATA, and libraries of the following Debian packages, under other names and
otherwise unchanged. Their sources are the Debian source packages of these versions. The texts of
the licences follow the table.

"""


def output_of(*command: str) -> str:
    """What a command prints; it must succeed."""
    return subprocess.run(command, text=True, capture_output=True, check=True).stdout


def package_of(library: pathlib.Path) -> str:
    """The Debian package that a file belongs to; /lib and /usr/lib are one folder."""
    for path in (library, pathlib.Path("/", *library.parts[2:])):
        question = ["dpkg-query", "-S", str(path)]
        done = subprocess.run(question, text=True, capture_output=True, check=False)
        if done.returncode == 0:
            return done.stdout.split(":")[0]
    raise SystemExit(f"{library} belongs to no Debian package: its licence is not known")


def licence_name(package: str, text: str) -> str:
    """The licence of all files but the listed ones, from a machine-readable copyright file."""
    found = re.search(r"^Files: \*.*?^License: *([^\n]+)", text, re.MULTILINE | re.DOTALL)
    if not found and package not in IN_PROSE:
        raise SystemExit(f"{DOCUMENTS}/{package}/copyright: add its licence to {__file__}")
    return found.group(1) if found else IN_PROSE[package]


def section(title: str, text: str) -> str:
    """A text under its title."""
    return f"\n{'=' * 80}\n{title}\n{'=' * 80}\n\n{text.strip()}\n"


def common_licences(texts: Dict[str, str]) -> List[str]:
    """The files of Debian's common licences that copyright files refer to."""
    named = re.findall(rf"{COMMON}/([\w.-]+)", "".join(texts.values()))
    names = {name.rstrip(".") for name in named}
    return sorted(name for name in names if (COMMON / name).is_file())


def licences_of(libraries: List[pathlib.Path]) -> str:
    """The table of the packages of these files, with versions and licences, and all texts."""
    packages = sorted({package_of(library) for library in libraries} | set(COMPILED_IN))
    texts = {}
    table = ""
    for package in packages:
        texts[package] = (DOCUMENTS / package / "copyright").read_text("utf-8", errors="replace")
        version = output_of("dpkg-query", "-W", "-f", "${Version}\\n", package).split()[0]
        table += f"{package:22} {version:24} {licence_name(package, texts[package])}\n"
    parts = [section(package, text) for package, text in texts.items()]
    parts += [section(name, (COMMON / name).read_text("utf-8")) for name in common_licences(texts)]
    return INTRODUCTION + table + "".join(parts)
