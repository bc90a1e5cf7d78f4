"""Stations: modules in a row with one process image."""

from __future__ import annotations

import os

from ._arguments import Path, path_argument, text_argument
from ._errors import InputError
from ._findings import Finding, finding_of, findings_of, for_terminal
from ._handle import Handle
from ._library import bytes_of, call, json_of, text_of
from ._mxstation import library
from ._plan import Plan


class Station:
    """Modules in a row, as a station file describes them. It never changes."""

    __slots__ = ("_handle", "_path", "__weakref__")

    def __init__(self, pointer: int, path: str) -> None:
        """Owns the mxstation_station at `pointer`; use `load` or `from_text`."""
        self._handle = Handle(pointer, library.mxstation_free)
        self._path = path

    @classmethod
    def load(cls, path: Path, *, catalogue: str | None = None) -> Station:
        """Returns the station of the station file (YAML) at `path`, with the mx files that it
        names; paths in it count from its directory.

        `catalogue` is the URL of the catalogue of modules named by identifier, as `Catalogue.open`
        takes it. What is wrong with the station is in `findings`; a file that cannot be read or is
        of another kind raises `InputError`.
        """
        argument = path_argument(path)
        pointer = call(library.mxstation_load, argument, _catalogue_argument(catalogue))
        return cls(pointer, os.fsdecode(argument))

    @classmethod
    def from_text(
        cls, text: str, name: str = "<text>", *, catalogue: str | None = None
    ) -> Station:
        """Does the same with `text`, the content of a file called `name`. For a name in angle
        brackets paths count from the current directory."""
        source = text_argument(text, "the text of a station")
        called = text_argument(name, "name")
        arguments = (source, len(source), called, _catalogue_argument(catalogue))
        return cls(call(library.mxstation_from_text, *arguments), name)

    @property
    def name(self) -> str:
        """The name that the station states."""
        return text_of(library.mxstation_name, self._handle)

    @property
    def source(self) -> str:
        """The text of the station file."""
        return text_of(library.mxstation_source, self._handle)

    @property
    def findings(self) -> tuple[Finding, ...]:
        """All that is wrong with the text, with line and column."""
        return findings_of(bytes_of(library.mxstation_findings, self._handle))

    def plan(self) -> Plan:
        """Gives each module its place and writes the station's values into the parameter images.

        Raises `InputError` with everything that is wrong if there is an error; warnings and notes
        are in `Plan.findings`.
        """
        handle = self._planned()
        if not library.mxstation_plan_ok(handle):
            raise InputError(findings_of(bytes_of(library.mxstation_plan_findings, handle)))
        return Plan(handle)

    def check(self) -> tuple[Finding, ...]:
        """Returns everything that is wrong with the station and its plan; what is a warning
        elsewhere is an error here. A clean station has at most notes."""
        checked = json_of(library.mxstation_check_json, self._planned())
        return tuple(finding_of(one) for one in checked["findings"])

    def pinned(self) -> str:
        """Returns the text in which every module states the addresses that it has now, so that
        later changes of the row move none; every other byte is kept. Raises `Error` if there is no
        plan."""
        return text_of(library.mxstation_pinned, self._handle)

    def _planned(self) -> Handle:
        return Handle(call(library.mxstation_plan_of, self._handle), library.mxstation_plan_free)

    def __repr__(self) -> str:
        return f"<Station {self.name!r} of {for_terminal(self._path)}>"


def _catalogue_argument(catalogue: str | None) -> bytes | None:
    return None if catalogue is None else text_argument(catalogue, "catalogue")
