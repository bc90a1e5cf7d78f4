"""Checks of mx files."""

from __future__ import annotations

from operator import itemgetter
from typing import Any, NamedTuple, Optional

from ._arguments import Path, path_argument
from ._findings import for_terminal
from ._library import TEXT, json_of, text_of
from ._mxmodule import library
from ._rows import Rows


class CheckFinding(NamedTuple):
    """A place where an mx file breaks a rule.

    - `file`: its name.
    - `rule`: name of the rule.
    - `severity`: "error", "warning" or "note".
    - `line`: in the text form, from 1; None for an mx file.
    - `column`: in the text form, from 1.
    - `offset`: first byte in the mx file.
    - `length`: in bytes.
    - `group`: four hexadecimal digits; None: the file itself.
    - `subject`: such as `parameter 3 "Filter"`; may be empty.
    - `text`: what is wrong.
    """

    file: str
    rule: str
    severity: str
    line: Optional[int]
    column: Optional[int]
    offset: int
    length: int
    group: Optional[str]
    subject: str
    text: str

    @property
    def place(self) -> str:
        """File with line and column, or with the offset of the byte."""
        if self.line is not None:
            return f"{self.file}:{self.line}:{self.column}"
        return f"{self.file}:0x{self.offset:06x}"

    def __str__(self) -> str:
        subject = f" {self.subject}:" if self.subject else ""
        text = f"{self.place}: {self.severity}: [{self.rule}]{subject} {self.text}"
        return for_terminal(text)


class CheckRule(NamedTuple):
    """A rule of the mx format.

    - `name`: as in findings.
    - `severity`: of its findings.
    - `explanation`: what is wrong, and its effect on readers.
    - `example`: a finding.
    """

    name: str
    severity: str
    explanation: str
    example: str


_members = itemgetter(*CheckFinding._fields[1:])
_members_of_rule = itemgetter(*CheckRule._fields)


def _paths(paths: tuple[Path, ...]) -> tuple[Any, int]:
    arguments = [path_argument(one) for one in paths]
    return (TEXT * len(arguments))(*arguments), len(arguments)


def check(*paths: Path) -> Rows[CheckFinding]:
    """Returns every violation of a rule in the mx files, or their text forms, at `paths`.

    Raises `InputError` for a file that cannot be read, or for a text with errors, of which each is
    a finding.
    """
    files = json_of(library.mxmodule_check, *_paths(paths))["files"]
    found = [
        CheckFinding._make((file["file"], *_members(one)))
        for file in files
        for one in file["findings"]
    ]
    return Rows(found, CheckFinding._fields)


def check_sarif(*paths: Path) -> str:
    """Returns the same as SARIF 2.1.0, JSON."""
    return text_of(library.mxmodule_check_sarif, *_paths(paths))


def check_rules() -> Rows[CheckRule]:
    """Returns all rules, in the order of the documentation."""
    rules = json_of(library.mxmodule_check_rules)["rules"]
    return Rows([CheckRule._make(_members_of_rule(one)) for one in rules], CheckRule._fields)
