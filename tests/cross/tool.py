"""Calls of mxtool, each in its own process."""

from __future__ import annotations

import subprocess
from dataclasses import dataclass
from pathlib import Path


@dataclass
class Answer:
    code: int
    output: bytes
    errors: str
    command: list[str]

    def details(self) -> str:
        return f"{' '.join(repr(word) for word in self.command)}\n  exit {self.code}\n  {self.errors.strip()}"


class Tool:
    def __init__(self, program: Path, folder: Path) -> None:
        self.program = program
        self.folder = folder
        self.calls = 0

    def run(self, *words: str, given: bytes = b"") -> Answer:
        self.calls += 1
        done = subprocess.run([str(self.program), *words], input=given, capture_output=True, cwd=self.folder,
                              timeout=120, check=False)
        return Answer(done.returncode, done.stdout, done.stderr.decode("utf-8", "replace"), ["mxtool", *words])
