"""Lists of rows that notebooks show as tables and pandas takes as data frames."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Generic, Iterator, Sequence, Tuple, TypeVar, cast, overload

from ._errors import MissingLibrary, UnknownName, request_finding, wrong_type
from ._findings import Finding

if TYPE_CHECKING:
    import pandas

Row = TypeVar("Row", bound=Tuple[Any, ...])

_SHOWN_ROWS = 10  # in `repr`


class Svg(str):
    """A drawing, an SVG document. Notebooks show it as a picture."""

    __slots__ = ()

    def _repr_svg_(self) -> str:
        return str(self)


def data_frame(columns: dict[str, Any]) -> pandas.DataFrame:
    """Returns a data frame of `columns`. Raises `MissingLibrary` without pandas."""
    try:
        import pandas
    except ImportError as failure:
        text = f"Data frames need pandas, which cannot be imported: {failure}"
        hint = "install python3-pandas, or pandas into the virtual environment"
        finding = Finding("error", "request", "pandas", text, hint, (), "")
        raise MissingLibrary([finding]) from None
    return pandas.DataFrame(columns)


def html_table(headings: Sequence[str], rows: Sequence[Sequence[object]]) -> str:
    """Returns a table as HTML, with blanks for the underscores in headings. No text of it is
    markup."""
    from html import escape

    def line(cells: Sequence[object], tag: str) -> str:
        content = "".join(f"<{tag}>{escape(_shown(one))}</{tag}>" for one in cells)
        return f"<tr>{content}</tr>"

    head = line([one.replace("_", " ") for one in headings], "th")
    body = "\n".join(line(row, "td") for row in rows)
    return f"<table>\n<thead>{head}</thead>\n<tbody>\n{body}\n</tbody>\n</table>"


def _shown(cell: object) -> str:
    return "" if cell is None else str(cell)


class Rows(Sequence[Row], Generic[Row]):
    """A list that never changes, of rows of one kind.

    `rows[0]` and `rows[-3:]` count, `rows["AI 1"]` is the one row with this alias or name, and
    `rows.where(direction="in")` has all rows with these members. Equal to a tuple or list of the
    same rows.
    """

    __slots__ = ("_rows", "_columns")

    def __init__(self, rows: Sequence[Row], columns: Sequence[str]) -> None:
        """`columns` are the members of each row that tables have."""
        self._rows = tuple(rows)
        self._columns = tuple(columns)

    @overload
    def __getitem__(self, index: int) -> Row: ...

    @overload
    def __getitem__(self, index: str) -> Row: ...

    @overload
    def __getitem__(self, index: slice) -> Rows[Row]: ...

    def __getitem__(self, index: int | str | slice) -> Row | Rows[Row]:
        """Raises `UnknownName` for a name of no row or of several, `IndexError`, `WrongType`."""
        if isinstance(index, str):
            return self._named(index)
        try:
            found: Any = self._rows[index]
        except TypeError:
            raise wrong_type("the index of a row", index, "int", "slice", "str") from None
        return Rows(found, self._columns) if isinstance(index, slice) else cast(Row, found)

    def where(self, **members: object) -> Rows[Row]:
        """Returns the rows of which each of `members` has this value. Raises `UnknownName` for a
        member that rows do not have."""
        for name in members:
            if name not in self._columns:
                text = f'Rows have no member "{name}", they have {", ".join(self._columns)}'
                raise UnknownName([request_finding(text, place=name, accepted=self._columns)])
        wanted = members.items()
        found = [row for row in self if all(getattr(row, name) == one for name, one in wanted)]
        return Rows(found, self._columns)

    def _named(self, name: str) -> Row:
        found = self._all_named(name)
        if len(found) == 1:
            return found[0]
        if found:
            text = f'{len(found)} rows have the name "{name}", expected one'
            hint = f'where({self._naming()[-1]}="...") has all of them'
            raise UnknownName([request_finding(text, place=name, hint=hint)])
        raise UnknownName([self._unknown(name)])

    def _unknown(self, name: str) -> Finding:
        from difflib import get_close_matches

        names = {str(getattr(row, member)) for member in self._naming() for row in self}
        nearest = get_close_matches(name, sorted(names - {""}), 3)
        guess = f', did you mean "{nearest[0]}"?' if nearest else ""
        return request_finding(f'No row has the name "{name}"{guess}', place=name, accepted=nearest)

    def _naming(self) -> tuple[str, ...]:
        return tuple(one for one in ("alias", "name") if one in self._columns)

    def _all_named(self, name: str) -> list[Row]:
        """Returns the rows with the alias `name`; if there is none, those with the name."""
        for member in self._naming():
            found = [row for row in self if getattr(row, member) == name]
            if found:
                return found
        return []

    def __contains__(self, row: object) -> bool:
        return bool(self._all_named(row)) if isinstance(row, str) else row in self._rows

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, (Rows, tuple, list)):
            return NotImplemented
        return self._rows == tuple(other)

    def __hash__(self) -> int:
        return hash(self._rows)

    def __len__(self) -> int:
        return len(self._rows)

    def __iter__(self) -> Iterator[Row]:
        return iter(self._rows)

    def __repr__(self) -> str:
        lines = [f"  {row!r}" for row in self._rows[:_SHOWN_ROWS]]
        if len(self._rows) > _SHOWN_ROWS:
            lines.append(f"  and {len(self._rows) - _SHOWN_ROWS} more")
        end = "".join(f"\n{line}" for line in lines)
        return f"<{type(self).__name__} of {len(self._rows)}{':' if lines else ''}{end}>"

    def to_dataframe(self) -> pandas.DataFrame:
        """Returns the rows as a data frame. Raises `MissingLibrary` without pandas."""
        return data_frame({name: [getattr(row, name) for row in self] for name in self._columns})

    def _repr_html_(self) -> str:
        rows = [[getattr(row, name) for name in self._columns] for row in self]
        return html_table(self._columns, rows)
