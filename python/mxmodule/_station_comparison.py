"""The differences of two stations."""

from __future__ import annotations

from operator import itemgetter
from typing import NamedTuple

from ._findings import for_terminal
from ._handle import Handle
from ._library import text_of
from ._mxstation import library
from ._result import Result
from ._rows import Rows


class StationChange(NamedTuple):
    """A difference of two stations.

    - `kind`: what it is about, such as "channel moved".
    - `module`: name of the module; empty: of the whole station.
    - `subject`: channel, parameter or image; may be empty.
    - `a`: before, as people read it; empty: it was not there.
    - `b`: after, the same.
    - `changes_values`: a program bound to A no longer reads the same from B.
    """

    kind: str
    module: str
    subject: str
    a: str
    b: str
    changes_values: bool


_members = itemgetter(*StationChange._fields)


class StationComparison(Result):
    """The differences of a station B from a station A. It never changes."""

    __slots__ = ()

    def __init__(self, pointer: int) -> None:
        """Owns the mxstation_comparison at `pointer`; use `Plan.compare`."""
        handle = Handle(pointer, library.mxstation_comparison_free)
        super().__init__(handle, library.mxstation_comparison_json)

    @property
    def is_same(self) -> bool:
        """Whether there is no difference."""
        return bool(self._values["same"])

    @property
    def same_values(self) -> bool:
        """Whether a program bound to the addresses of A reads the same values from B."""
        return bool(self._values["same_values"])

    @property
    def reasons(self) -> tuple[str, ...]:
        """Why it does not."""
        return tuple(self._values["reasons"])

    @property
    def changes(self) -> Rows[StationChange]:
        """The differences: those of the whole, then by module in the order of B."""
        rows = [StationChange._make(_members(one)) for one in self._values["changes"]]
        return Rows(rows, StationChange._fields)

    def text(self) -> str:
        """Returns the differences for people, with the verdict."""
        return text_of(library.mxstation_comparison_text, self._handle)

    def json(self) -> str:
        """Returns the differences as JSON, schema "mxtool.station-diff"."""
        return self._json

    def __repr__(self) -> str:
        return f"<StationComparison: {for_terminal(self._values['verdict'])}>"

    def _repr_html_(self) -> str:
        return self.changes._repr_html_()
