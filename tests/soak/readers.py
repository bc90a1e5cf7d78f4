#!/usr/bin/env python3
"""Reads a catalogue over many connections through a pooler while it is populated.

Usage: with-postgresql readers.py BIN [--short]

BIN holds mxtool and catalogue-readers; the examples are built beside it. Two hundred connections
find modules, read their content and list those of an order code, a read each second on average:
first nothing is written, then 10,000 modules are replaced by others in one populate. Each answer
must be that of the old or of the new catalogue, and the 99th percentile of each kind of read at
most ten times that of the quiet server. --short: 40 connections and 100 modules, replaced four
times, without a limit for the times, for the test suite. Ends with 1 at the first failure.
"""
from __future__ import annotations

import os
import re
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from generated_modules import examples, generate

# Words of texts, not the keys of the header.
WORDS = re.compile(rb"\b([A-Z][a-z]{3,}\b(?![,=])|(AI|AO|DI|DO) (?=\d))")
STATES = ("old", "new")
MOST = 10  # times the 99th percentile of the quiet server

Figures = dict[str, list[float]]  # of each kind of read: number, median, 99 %, longest in ms


class Load:
    """How many connections and modules, how often each reads, and how long the server is quiet."""

    def __init__(self, short: bool) -> None:
        self.connections = 40 if short else 200
        self.modules = 100 if short else 10_000
        self.populates = 4 if short else 1
        self.pause = 0.02 if short else 1.0  # seconds
        self.quiet = 0.5 if short else 30.0  # seconds


def fail(text: str) -> None:
    sys.exit(f"readers: {text}")


def populate(programs: Path, folder: Path, url: str) -> float:
    """Stores the modules of `folder`; returns how many seconds it took. Ends with 1 if it fails."""
    begin = time.monotonic()
    run = subprocess.run([programs / "mxtool", "-q", "populate", folder, "--db", url],
                         capture_output=True, text=True, check=False)
    if run.returncode != 0 or run.stderr:
        first = run.stderr.split("\n", maxsplit=1)[0]
        fail(f"populate: exit code {run.returncode}, {first}")
    return time.monotonic() - begin


def with_other_names(mx: bytes) -> bytes:
    """Returns the module with another label, names of channels and parameters, and options."""
    mx = re.sub(rb"(?<=BrandLabelName,s=).", b"#", mx, count=1)
    return re.sub(WORDS, lambda word: word.group().swapcase(), mx)


class Readers:
    """Runs catalogue-readers; its readers are connected and read when the object is made."""

    def __init__(self, programs: Path, urls: list[str], load: Load) -> None:
        self.process = subprocess.Popen(
            [programs / "catalogue-readers", *urls, str(load.connections), str(load.pause)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        assert self.process.stdout is not None
        self.process.stdout.readline()

    def end(self) -> tuple[Figures, int, int]:
        """Ends the readers. Returns their figures, who saw a change, and the most that one saw."""
        out, err = self.process.communicate()
        if self.process.returncode != 0 or err:
            fail(err)
        rows = [line.split() for line in out.splitlines()]
        figures = {row[0]: [float(cell) for cell in row[1:]] for row in rows if len(row) == 5}
        return figures, int(rows[-1][1]), int(rows[-1][2])


def pooled_database() -> str:
    """Makes a database; returns its URL through the pooler."""
    subprocess.run(["psql", os.environ["TEST_POSTGRESQL"], "-qc", "CREATE DATABASE readers"],
                   check=True)
    return f"postgresql:{os.environ['TEST_POSTGRESQL_POOLED']} dbname=readers"


def compare(quiet: Figures, busy: Figures, limited: bool) -> None:
    for kind, (number, median, most, longest) in busy.items():
        times = most / quiet[kind][2]
        print(f"  {kind}: {number:.0f} reads, median {median:.1f} ms, 99 % within {most:.1f} ms, "
              f"all within {longest:.1f} ms; quiet: {quiet[kind][1]:.1f}, {quiet[kind][2]:.1f} and "
              f"{quiet[kind][3]:.1f} ms: {times:.1f} times")
        if limited and times > MOST:
            fail(f"{kind}: 99 % of the reads take {times:.1f} times as long as without a populate, "
                 f"expected at most {MOST}")


def read_quietly(programs: Path, urls: list[str], load: Load) -> Figures:
    """Returns what the readers measure while nothing is written."""
    readers = Readers(programs, urls, load)
    time.sleep(load.quiet)
    figures, seeing, _ = readers.end()
    if seeing != 0:
        fail(f"{seeing} readers saw a state that was not stored")
    return figures


def read_during_populates(programs: Path, urls: list[str], load: Load, folder: Path) -> Figures:
    """Returns what the readers measure while the modules are replaced."""
    readers = Readers(programs, urls, load)
    took = []
    for number in range(load.populates):
        took.append(populate(programs, folder / STATES[(number + 1) % 2], urls[0]))
    time.sleep(3 * load.pause)  # most readers read once more
    figures, seeing, changes = readers.end()
    if not 1 <= changes <= load.populates:
        fail(f"a reader saw {changes} changes, expected at most {load.populates} and at least 1")
    print(f"{load.connections} connections through the pooler, {load.modules} modules replaced "
          f"{load.populates} times in {max(took):.2f} s at most: no error, nothing torn, {seeing} "
          f"readers saw a change")
    return figures


def main() -> None:
    programs = Path(sys.argv[1])
    short = "--short" in sys.argv
    load = Load(short)
    with tempfile.TemporaryDirectory(prefix="soak-readers-") as name:
        folder = Path(name)
        for number, state in enumerate(STATES):
            generate(examples(programs), folder / state, load.modules, str(number))
        for path in (folder / "new").iterdir():
            path.write_bytes(with_other_names(path.read_bytes()))
        urls = [pooled_database(), *(f"sqlite:{folder}/{state}.sqlite" for state in STATES)]
        for url, state in zip(urls, (STATES[0], *STATES)):
            populate(programs, folder / state, url)
        quiet = read_quietly(programs, urls, load)
        compare(quiet, read_during_populates(programs, urls, load, folder), limited=not short)


main()
