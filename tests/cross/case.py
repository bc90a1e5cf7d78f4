"""One module under test, and the handling of a wrong answer."""

from __future__ import annotations

import json
import random

from description import Module, Parameter
from mxfile import mx_file
from tool import Answer, Tool

MX_FILE = "module.bin"


class Wrong(Exception):
    """An answer that differs from the one computed here."""


def expect(holds_true: bool, what: str, answer: Answer, *details: object) -> None:
    if not holds_true:
        raise Wrong("\n  ".join([what, *map(str, details), answer.details()]))


class Case:
    """One module, its mx file and the calls about it."""

    def __init__(self, tool: Tool, module: Module, choose: random.Random) -> None:
        self.tool, self.module, self.choose = tool, module, choose
        (tool.folder / MX_FILE).write_bytes(mx_file(module))

    def usable(self) -> list[Parameter]:
        return [one for one in self.module.parameters if self.module.is_usable(one)]

    def config(self, *words: str, given: bytes = b"") -> Answer:
        return self.tool.run("config", MX_FILE, *words, given=given)


def as_json(answer: Answer, what: str) -> dict:
    expect(answer.code == 0, what, answer)
    return json.loads(answer.output)
