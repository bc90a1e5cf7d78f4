"""The exceptions of this package."""

from __future__ import annotations

from typing import Sequence

from ._findings import Finding


class Error(Exception):
    """Why an operation has no result. What was there before is unchanged.

    - `text`: what is wrong, what was found, what is expected.
    - `place`: file with line and column or byte offset, or the name of a value; may be empty.
    - `hint`: what to do; may be empty.
    - `accepted`: what is accepted instead, where it can be listed.
    - `findings`: all that is wrong, at least one; the other members are those of one.
    """

    text: str
    place: str
    hint: str
    accepted: tuple[str, ...]
    findings: tuple[Finding, ...]

    def __init__(self, findings: Sequence[Finding]) -> None:
        super().__init__(tuple(findings))
        self.findings = tuple(findings)
        errors = [one for one in findings if one.severity == "error"] or list(findings)
        reason = errors[-1]
        self.text = reason.text
        self.place = reason.place
        self.hint = reason.hint
        self.accepted = reason.accepted

    def __str__(self) -> str:
        return "\n".join(str(one) for one in self.findings)


class RequestError(Error, ValueError):
    """What was asked for is not accepted: a name, a value, a condition of a search."""


class UnknownName(RequestError, KeyError):
    """Nothing has this name, or several have it; `accepted` has the nearest ones."""

    __str__ = Error.__str__


class WrongType(Error, TypeError):
    """An argument is of a type that the function does not take."""


class InputError(Error):
    """What was read cannot be used: a file, bytes, a text."""


class OutputError(Error):
    """What is written or reached failed: a file, a database, a coupler."""


class ClosedError(RequestError):
    """The object was closed, or was opened by another process."""


class MissingLibrary(Error, ImportError):
    """A shared library of this package cannot be loaded."""

    __str__ = Error.__str__


class Defect(Error, RuntimeError):
    """A defect of the library or of this package; please report it."""


class SideEffectWarning(UserWarning):
    """A value that was set changed something else too, or was rounded."""


def request_finding(
    text: str, *, place: str = "", hint: str = "", accepted: Sequence[str] = ()
) -> Finding:
    """Returns an error about what the caller asked for."""
    return Finding("error", "request", place, text, hint, tuple(accepted), "")


def wrong_type(
    what: str, found: object, *accepted: str, place: str = "", hint: str = ""
) -> WrongType:
    """Returns the exception that `found` is not `what`, of which `accepted` are the types."""
    kind = type(found).__name__
    text = f"Found {kind} for {what}, expected {' or '.join(accepted)}"
    return WrongType([request_finding(text, place=place, hint=hint, accepted=accepted)])
