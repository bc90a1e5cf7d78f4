#!/usr/bin/python3
"""Copies the libraries of a build, and what they need, into the folder of a wheel.

Usage: libraries.py BUILD FOLDER

Every file gets a name and a SONAME of its own, NAME-mxwheel.so.VERSION, and looks for the others in
its own folder first. So the loader never takes a library of the system instead of one of the wheel,
and never gives one of the wheel to another package, such as SQLite to Python's own sqlite3.
"""

from __future__ import annotations

import os
import pathlib
import re
import shutil
import subprocess
import sys
from typing import Dict, List

from licences import licences_of

# The loader's answer: "NAME => PATH (ADDRESS)", or "NAME => not found".
FOUND = re.compile(r"^\s*(\S+) => (.+?)(?: \(0x|$)", re.MULTILINE)
# The libraries that the Python package opens.
OPENED = ("libmxmodule.so.1", "libmxstation.so.1", "libmxonline.so.1")
# Every Debian with Python has them, and one process needs one of each (compare PEP 513).
OF_THE_SYSTEM = re.compile(r"lib(c|m|dl|rt|pthread|gcc_s|stdc\+\+)\.so\.|ld-linux|linux-vdso")
# Opened by the device database on demand. libpq and what it needs remain the system's.
ENGINE = "device-database/libdevice-database-postgresql.so"


def run(*command: str) -> str:
    """Runs a command; returns its output. A failure ends the program."""
    # Only the places that a library names itself, and those of the system.
    environment = {**os.environ, "LC_ALL": "C"}
    environment.pop("LD_LIBRARY_PATH", None)
    try:
        done = subprocess.run(command, env=environment, text=True, capture_output=True, check=False)
    except FileNotFoundError:
        raise SystemExit(f"{command[0]} is missing: scripts/setup wheel installs it") from None
    if done.returncode != 0:
        raise SystemExit(f"{' '.join(command)}: {done.stderr or done.stdout}")
    return done.stdout


def needed_by(library: pathlib.Path) -> Dict[str, pathlib.Path]:
    """The files that the loader finds for a library, by SONAME, without those of every system."""
    found = {}
    for name, path in FOUND.findall(run("ldd", str(library))):
        if OF_THE_SYSTEM.search(name):
            continue
        if path == "not found":
            raise SystemExit(f"{library}: {name}, which it needs, is missing")
        found[name] = pathlib.Path(path).resolve()
    return found


def bundled_name(soname: str) -> str:
    """The name of a library in the wheel: libz.so.1 is libz-mxwheel.so.1."""
    return soname.replace(".so", "-mxwheel.so", 1)


def collect(build: pathlib.Path) -> Dict[str, pathlib.Path]:
    """The libraries of the wheel: the files, by SONAME."""
    libraries = {name: (build / "lib" / name).resolve() for name in OPENED}
    for name in OPENED:
        if not libraries[name].is_file():
            raise SystemExit(f"{libraries[name]} is missing: build it, or name another build")
        libraries.update(needed_by(libraries[name]))
    return dict(sorted(libraries.items()))


def copy(source: pathlib.Path, target: pathlib.Path, names: List[str], search: str) -> None:
    """Copies a library without what is needed only to link it, and with the names of the wheel."""
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
    target.chmod(0o644)
    # Before patchelf: strip damages files that patchelf has extended.
    run("strip", "--strip-unneeded", str(target))
    # One kind of change at a time: patchelf 0.14 mixes up the texts of several.
    run("patchelf", "--set-soname", target.name, str(target))
    run("patchelf", "--force-rpath", "--set-rpath", search, str(target))
    renamed = [word for name in names for word in ("--replace-needed", name, bundled_name(name))]
    run("patchelf", *renamed, str(target))


def main() -> None:
    """Fills the folder."""
    build, folder = (pathlib.Path(argument) for argument in sys.argv[1:])
    libraries = collect(build)
    for name, source in libraries.items():
        copy(source, folder / bundled_name(name), list(libraries), "$ORIGIN")
    engine = build / "lib" / ENGINE
    if engine.is_file():
        copy(engine, folder / ENGINE, list(libraries), "$ORIGIN/..")
    foreign = [path for path in libraries.values() if build.resolve() not in path.parents]
    licences = folder / "LICENCES.txt"
    licences.write_text(licences_of(foreign), encoding="utf-8")


main()
