"""Findings: what the libraries tell a person."""

from __future__ import annotations

import json
from typing import Any, NamedTuple

from ._hints import in_python


def for_terminal(text: str) -> str:
    """Returns `text` for a terminal: what is not visible, such as control characters and marks of
    direction, is written as Python does in texts, \\x1b or \\u202e."""
    if text.isprintable():
        return text
    shown = (one if one.isprintable() else one.encode("unicode_escape").decode() for one in text)
    return "".join(shown)


class Finding(NamedTuple):
    """A message about something that was asked, read or written.

    - `severity`: "error", "warning" or "note".
    - `origin`: what it is about: "request", "input" or "output".
    - `place`: file with line and column or byte offset, or the name of a value; may be empty.
    - `text`: what is wrong, what was found, what is expected.
    - `hint`: what to do; may be empty.
    - `accepted`: what is accepted instead, where it can be listed.
    - `excerpt`: the line of the text with a mark below the column; may be empty.
    """

    severity: str
    origin: str
    place: str
    text: str
    hint: str
    accepted: tuple[str, ...]
    excerpt: str

    def __str__(self) -> str:
        lines = [f"{self.place}: {self.text}" if self.place else self.text]
        lines += [line for line in self.excerpt.split("\n") if line]
        if self.hint:
            lines.append(f"hint: {self.hint}")
        return "\n".join(for_terminal(line) for line in lines)


def finding_of(values: Any) -> Finding:
    """Returns the finding in `values`, a member of the schema "mxmodule.findings"."""
    return Finding(
        values["severity"],
        values.get("origin", "input"),
        values["place"],
        values["text"],
        in_python(values["hint"]),
        tuple(values["accepted"]),
        values.get("excerpt", ""),
    )


def findings_of(text: str | bytes) -> tuple[Finding, ...]:
    """Returns the findings in `text`, JSON of the schema "mxmodule.findings"."""
    return tuple(finding_of(one) for one in json.loads(text)["findings"])
