"""A catalogue on several servers: its states "a" and "b", calls of mxtool, and processes that read it."""
from __future__ import annotations

import os
import pathlib
import subprocess
import sys
import threading
import time
from typing import List, NamedTuple, NoReturn, Tuple

import generated_modules

ENVIRONMENT = {**os.environ, "ASAN_OPTIONS": "detect_leaks=0"}
HINTS = ("hint: the database is unchanged",
         "hint: the database has all of the changes or none: make them again")


def fail(text: str) -> NoReturn:
    """Ends the test."""
    sys.exit(f"{pathlib.Path(sys.argv[0]).name}: {text}")


def expect(holds: bool, text: str) -> None:
    """Ends the test unless `holds`."""
    if not holds:
        fail(text)


class Run(NamedTuple):
    """A call of mxtool that ended."""

    code: int
    output: str
    errors: str


class Catalogue:
    """The catalogue at a URL, and the files of its states in `folder`/a and `folder`/b."""

    def __init__(self, binaries: pathlib.Path, folder: pathlib.Path, modules: int) -> None:
        self.binaries = binaries
        self.root = folder / "writers"
        self.exported = folder / "exported"
        originals = generated_modules.examples(binaries)
        for state, digit in (("a", "1"), ("b", "2")):
            generated_modules.generate(originals, self.files(state), modules, digit)
        self.contents = {state: generated_modules.contents(self.files(state)) for state in "ab"}

    def files(self, state: str) -> pathlib.Path:
        """Returns the directory with the files of a state, one writer's for catalogue-worker."""
        return self.root / "0" / state

    def tool(self, *words: str) -> Run:
        """Runs mxtool."""
        run = subprocess.run([self.binaries / "mxtool", "-q", *words], capture_output=True,
                             text=True, check=False, env=ENVIRONMENT)
        return Run(run.returncode, run.stdout, run.stderr)

    def start_populate(self, state: str, url: str) -> subprocess.Popen[str]:
        """Starts a populate with the files of a state."""
        return subprocess.Popen(
            [self.binaries / "mxtool", "-q", "populate", str(self.files(state)), "--db", url],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=ENVIRONMENT)

    def populate(self, state: str, url: str) -> Run:
        """Populates with the files of a state."""
        return self.tool("populate", str(self.files(state)), "--db", url)

    def worker(self, *words: str) -> None:
        """Runs catalogue-worker, which must succeed."""
        run = subprocess.run([self.binaries / "catalogue-worker", *words], capture_output=True,
                             text=True, check=False, env=ENVIRONMENT)
        expect(run.returncode == 0, f"{words[0]}: {run.stderr}")

    def state(self, url: str) -> str:
        """Returns "a" or "b": which files the catalogue holds, all of them and no others."""
        run = self.tool("devices", "--db", url, "--export", str(self.exported))
        expect(run.code == 0, f"devices: {run.code} {run.errors}")
        found = generated_modules.contents(self.exported)
        for path in self.exported.iterdir():
            path.unlink()
        for state, files in self.contents.items():
            if found == files:
                return state
        fail(f"the catalogue holds {len(found)} modules that are no state that was stored")


def said_in_one_sentence(run: Run) -> str:
    """Returns the error of a populate that ended with 4, without the name of the database."""
    lines = run.errors.splitlines()
    expect(run.code == 4 and 1 <= len(lines) <= 2 and lines[0].startswith("error: Cannot ")
           and lines[1:] in ([], [HINTS[0]], [HINTS[1]]), f"populate: {run.code} {run.errors}")
    return lines[0].split(" dbname=", 1)[1].split(": ", 1)[1]


class Watcher:
    """A process that reads the catalogue through one object until `end`."""

    def __init__(self, catalogue: Catalogue, url: str) -> None:
        self.process = subprocess.Popen(
            [catalogue.binaries / "catalogue-worker", "watch", url, str(catalogue.root)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
            env=ENVIRONMENT)

    def end(self) -> Tuple[int, int, float, List[str]]:
        """Returns reads, failures, the longest time without an answer in seconds, and reasons."""
        output, errors = self.process.communicate()
        expect(self.process.returncode == 0, f"a reader: {errors}")
        lines = output.splitlines()
        reads, failures, milliseconds = (int(word) for word in lines[0].split())
        return reads, failures, milliseconds / 1000, lines[1:]


class Caller(threading.Thread):
    """Lists the catalogue again and again, each time with a new process, until `end`."""

    def __init__(self, catalogue: Catalogue, url: str) -> None:
        super().__init__(daemon=True)
        self.catalogue = catalogue
        self.url = url
        self.ended = threading.Event()
        self.calls = 0
        self.longest = 0.0
        self.errors: List[str] = []
        self.start()

    def run(self) -> None:
        last = time.monotonic()
        while not self.ended.wait(0.05):
            run = self.catalogue.tool("devices", "--db", self.url)
            self.calls += 1
            if run.code == 0:
                now = time.monotonic()
                self.longest = max(self.longest, now - last)
                last = now
            else:
                self.errors.append(run.errors)

    def end(self) -> Tuple[int, List[str], float]:
        """Returns calls, the errors of those that failed, and the longest time without a list."""
        self.ended.set()
        self.join()
        return self.calls, self.errors, self.longest
