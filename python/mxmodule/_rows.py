"""Lists of rows that notebooks show as tables and pandas takes as data frames."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Generic, Iterator, Sequence, Tuple, TypeVar, overload

from ._errors import MissingLibrary
from ._findings import Finding

if TYPE_CHECKING:
    import pandas

Row = TypeVar("Row", bound=Tuple[Any, ...])


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
    """A list that never changes, of rows of one kind."""

    __slots__ = ("_rows", "_columns")

    def __init__(self, rows: Sequence[Row], columns: Sequence[str]) -> None:
        """`columns` are the members of each row that tables have."""
        self._rows = tuple(rows)
        self._columns = tuple(columns)

    @overload
    def __getitem__(self, index: int) -> Row: ...

    @overload
    def __getitem__(self, index: slice) -> Sequence[Row]: ...

    def __getitem__(self, index: int | slice) -> Row | Sequence[Row]:
        return self._rows[index]

    def __len__(self) -> int:
        return len(self._rows)

    def __iter__(self) -> Iterator[Row]:
        return iter(self._rows)

    def __repr__(self) -> str:
        return f"<{type(self).__name__} of {len(self._rows)}>"

    def to_dataframe(self) -> pandas.DataFrame:
        """Returns the rows as a data frame. Raises `MissingLibrary` without pandas."""
        return data_frame({name: [getattr(row, name) for row in self] for name in self._columns})

    def _repr_html_(self) -> str:
        rows = [[getattr(row, name) for name in self._columns] for row in self]
        return html_table(self._columns, rows)
