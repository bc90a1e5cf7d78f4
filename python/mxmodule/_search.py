"""Searches of a catalogue: what is asked for, and how it is carried out."""

from __future__ import annotations

import ctypes
from typing import Any, NamedTuple, Sequence

from ._arguments import text_argument, whole_argument
from ._errors import RequestError, request_finding, wrong_type
from ._library import TEXT
from ._mxmodule import Search

_MOST_MODULES = 2**32 - 1


class CatalogueEntry(NamedTuple):
    """A module of a catalogue.

    - `module_id`: eight lower-case hexadecimal digits.
    - `family`: such as "kv38".
    - `label`: as on the product.
    - `in_bytes`: input process data, in bytes.
    - `out_bytes`: output process data, in bytes.
    - `parameter_block`: the default parameter image.
    - `file_bytes`: size of the mx file, in bytes; 0: stored without it.
    """

    module_id: str
    family: str
    label: str
    in_bytes: int
    out_bytes: int
    parameter_block: bytes
    file_bytes: int


class SearchExplanation(NamedTuple):
    """How a search is carried out.

    - `source`: where the modules come from: "index"; "order": all modules in their order; "scan":
      the same in a database of an older version, which has no index.
    - `words`: as they are compared, without case and accents.
    - `parts`: what is looked up in the index.
    - `blocks`: parts of the index, each of up to 1,024 modules.
    - `candidates`: modules that the index names.
    - `not_indexed`: modules that are newer than the index.
    - `sql`: the statement that reads modules.
    - `text`: all of it as sentences.
    """

    source: str
    words: tuple[str, ...]
    parts: tuple[str, ...]
    blocks: int
    candidates: int
    not_indexed: int
    sql: str
    text: str

    def __str__(self) -> str:
        return self.text


def entry_of(values: Any) -> CatalogueEntry:
    """Returns the entry of a device of the schema "mxtool.devices"."""
    return CatalogueEntry(
        values["module_id"],
        values["family"],
        values["label"],
        values["in_bytes"],
        values["out_bytes"],
        bytes.fromhex(values["parameter_block"]),
        values["file_bytes"],
    )


def explanation_of(values: Any, text: str) -> SearchExplanation:
    """Returns the explanation of the schema "mxtool.search-explanation" with its `text`."""
    return SearchExplanation(
        values["source"],
        tuple(values["words"]),
        tuple(values["parts"]),
        values["blocks"],
        values["candidates"],
        values["not_indexed"],
        values["sql"],
        text,
    )


def query_arguments(words: str, where: Sequence[str]) -> tuple[Any, ...]:
    """Returns words and conditions as the C interface takes them. Raises `WrongType`, or
    `RequestError` for what is no text."""
    if isinstance(where, str) or not isinstance(where, Sequence):
        raise wrong_type("where", where, "a list of str")
    conditions = [text_argument(one, "a condition") for one in where]
    array = (TEXT * len(conditions))(*conditions)
    return text_argument(words, "words"), array, len(conditions)


def search_argument(
    words: str,
    where: Sequence[str],
    limit: int | None = None,
    after: CatalogueEntry | str | None = None,
) -> Search:
    """Returns a search as the C interface takes it. Raises as above, also for a limit below 1."""
    text, conditions, count = query_arguments(words, where)
    last, family = _key_of(after)
    return Search(
        text,
        ctypes.cast(conditions, ctypes.POINTER(TEXT)),
        count,
        0 if limit is None else _limit_argument(limit),
        last,
        family,
    )


def _limit_argument(limit: int) -> int:
    number = whole_argument(limit, "limit")
    if not 1 <= number <= _MOST_MODULES:
        text = f"Found {number} for limit, expected 1 to {_MOST_MODULES}"
        accepted = [f"1 to {_MOST_MODULES}"]
        raise RequestError([request_finding(text, place="limit", accepted=accepted)])
    return number


def _key_of(after: CatalogueEntry | str | None) -> tuple[bytes | None, bytes | None]:
    """Returns identifier and family of a module, the latter if it is known."""
    if after is None:
        return None, None
    if isinstance(after, CatalogueEntry):
        return text_argument(after.module_id, "after"), text_argument(after.family, "after")
    if not isinstance(after, str):
        raise wrong_type("after", after, "str", "CatalogueEntry")
    return text_argument(after, "after"), None
