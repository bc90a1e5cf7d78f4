#!/usr/bin/env python3
"""Counts the round trips of a catalogue across a network: few, however many modules there are.

Usage: with-postgresql round_trips.py BIN

BIN holds mxtool; the examples are built beside it. Ends with 1 at the first failure.
"""
from __future__ import annotations

import os
import pathlib
import re
import subprocess
import sys
import tempfile

import generated_modules

RELAY = pathlib.Path(__file__).parents[1] / "devicedb/delaying_relay.py"
MODULES = 300
MOST = MODULES // 5


def expect_few(what: str, *words: str) -> None:
    """Runs mxtool through the relay; ends the program if it fails or makes too many round trips."""
    mxtool = str(pathlib.Path(sys.argv[1], "mxtool"))
    script = '"$0" "$@" --db "postgresql:$TEST_POSTGRESQL"'
    run = subprocess.run([str(RELAY), "sh", "-c", script, mxtool, *words],
                         capture_output=True, text=True, check=False)
    counted = re.search(r"(\d+) round trips$", run.stderr.strip())
    if run.returncode != 0 or counted is None:
        sys.exit(f"round_trips: {what}: {run.returncode} {run.stderr}")
    print(f"{what}: {counted[1]} round trips")
    if int(counted[1]) > MOST:
        sys.exit(f"round_trips: {what}: {counted[1]} round trips for {MODULES} modules, "
                 f"expected {MOST} at most")


def main() -> None:
    """Populates, populates again, with files that share identifiers, exports and removes."""
    examples = generated_modules.examples(pathlib.Path(sys.argv[1]))
    with tempfile.TemporaryDirectory() as folder:
        new, shared, few = (pathlib.Path(folder, name) for name in ("new", "shared", "few"))
        generated_modules.generate(examples, new, MODULES, "0")
        generated_modules.generate(examples, few, 2, "0")
        generated_modules.generate(examples, shared, MODULES, "0")
        for number, path in enumerate(sorted(shared.iterdir())):
            if number >= MODULES * 55 // 100:
                other = sorted(new.iterdir())[number - MODULES // 2]
                path.write_bytes(other.read_bytes())
        expect_few("populate", "populate", str(new))
        expect_few("populate again", "populate", str(new))
        expect_few("repeated identifiers", "populate", str(shared))
        expect_few("export", "devices", "--export", str(pathlib.Path(folder, "out")))
        expect_few("copy", "devices", "--copy-to", "sqlite:" + str(pathlib.Path(folder, "copy")))
        expect_few("remove", "populate", "--replace", str(few))


if __name__ == "__main__":
    os.environ.pop("DEVICE_DATABASE_URL", None)
    main()
