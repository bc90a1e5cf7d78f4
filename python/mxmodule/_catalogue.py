"""Catalogues of modules."""

from __future__ import annotations

import ctypes
from typing import TYPE_CHECKING, Any, Callable, Iterator, NamedTuple, Sequence

from ._arguments import Path, offsets_argument, path_argument, text_argument
from ._connection import Connection
from ._errors import ClosedError, RequestError, UnknownName
from ._findings import Finding, finding_of, findings_of
from ._library import bytes_of, call, json_of, text_of
from ._module import Module
from ._mxmodule import library
from ._progress import Progress
from ._rows import Rows
from ._search import (
    CatalogueEntry,
    SearchExplanation,
    entry_of,
    explanation_of,
    query_arguments,
    search_argument,
)

if TYPE_CHECKING:
    import pandas

    from ._mxmodule import Search

# Read at once by `search_each`.
_MODULES_OF_GROUP = 256


class Population(NamedTuple):
    """What populating a catalogue has changed.

    - `inserted`: new modules.
    - `replaced`: modules that were there before, or that several files state.
    - `failed`: files that are not stored.
    - `removed`: identifiers of the modules that were removed.
    - `findings`: files that failed, modules with several files.
    """

    inserted: int
    replaced: int
    failed: int
    removed: tuple[str, ...]
    findings: tuple[Finding, ...]


class Catalogue(Connection):
    """An open catalogue of modules: a database with their mx files, channels and parameters.

    Iterating gives its entries. Threads may share it: one call is carried out after the other.
    After a fork, a child opens its own.
    """

    __slots__ = ()

    def __init__(self, pointer: int) -> None:
        """Owns the mxmodule_catalogue at `pointer`; use `open`."""
        super().__init__(pointer, library.mxmodule_catalogue_free)
        self._shown = text_of(library.mxmodule_catalogue_name, self._open_handle())

    @classmethod
    def open(cls, url: str | None = None, *, create: bool = False) -> Catalogue:
        """Opens the catalogue at `url`: "sqlite:PATH" or "postgresql:CONNECTION"; None: at the
        value of the environment variable DEVICE_DATABASE_URL, else "sqlite:devices.sqlite".
        `create`: creates what is missing.

        Raises `OutputError` if it cannot be opened.
        """
        argument = None if url is None else text_argument(url, "url")
        return cls(call(library.mxmodule_catalogue_open, argument, bool(create)))

    @property
    def name(self) -> str:
        """Engine, host and database, never a password."""
        return self._shown

    def search(
        self,
        words: str = "",
        where: Sequence[str] = (),
        *,
        limit: int | None = None,
        after: CatalogueEntry | str | None = None,
    ) -> Rows[CatalogueEntry]:
        """Returns the modules that have each of `words`, which are separated by blanks, in the
        label, the order code, the name of a channel or parameter or the text of an option, as a
        part of any length, whatever the case and the accents; and that meet each condition of
        `where`, such as "in_bytes>4" or "label ~ DI".

        The best matches are the first; equally good ones, and all without words, are ordered by
        family and module identifier. `limit`: only so many modules. `after`: only those after this
        entry, or identifier, in the same list without it.

        Raises `RequestError` for another condition, or if `after` is not in the list.
        """
        found, _ = self._page(search_argument(words, where, limit, after))
        return Rows(found, CatalogueEntry._fields)

    def search_each(
        self, words: str = "", where: Sequence[str] = ()
    ) -> Iterator[CatalogueEntry]:
        """Gives the same modules one after the other, read in groups: the first ones come soon,
        and memory is used for a group alone.

        Raises as `search`, also `RequestError` if the last module of a group was removed
        meanwhile.
        """
        return self._each(words, where, search_argument(words, where, _MODULES_OF_GROUP))

    def explain(
        self,
        words: str = "",
        where: Sequence[str] = (),
        *,
        limit: int | None = None,
        after: CatalogueEntry | str | None = None,
    ) -> SearchExplanation:
        """Returns how such a search is carried out. Raises as `search`."""
        argument = ctypes.byref(search_argument(words, where, limit, after))
        with self._lock:
            handle = self._open_handle()
            values = json_of(library.mxmodule_catalogue_explain_json, handle, argument)
            text = text_of(library.mxmodule_catalogue_explain_text, handle, argument)
        return explanation_of(values, text)

    def search_findings(self, words: str = "", where: Sequence[str] = ()) -> tuple[Finding, ...]:
        """Returns a warning if such a search may miss modules, which are stored without content."""
        query = query_arguments(words, where)
        function = library.mxmodule_catalogue_search_findings
        with self._lock:
            return findings_of(bytes_of(function, self._open_handle(), *query))

    def find(self, module_id: str) -> CatalogueEntry:
        """Returns the module with the identifier `module_id`, eight hexadecimal digits. Raises
        `UnknownName`, which names those that there are."""
        found = self._of_module(json_of, library.mxmodule_catalogue_find, module_id)
        return entry_of(found["device"])

    def file(self, module_id: str) -> bytes:
        """Returns the mx file of a module; empty if it is stored without it. Raises
        `UnknownName`."""
        content: bytes = self._of_module(bytes_of, library.mxmodule_catalogue_file, module_id)
        return content

    def module(self, module_id: str, *, input_offset: int = 0, output_offset: int = 0) -> Module:
        """Returns the module made of its stored mx file. Raises `UnknownName`, or `InputError` if
        it is stored without the file."""
        offsets = offsets_argument(input_offset, output_offset)
        return Module(
            self._of_module(call, library.mxmodule_catalogue_module, module_id, *offsets)
        )

    def remove(self, module_id: str) -> None:
        """Removes a module. Raises `UnknownName`."""
        self._of_module(call, library.mxmodule_catalogue_remove, module_id)

    def populate(
        self,
        directory: Path,
        *,
        replace: bool = False,
        progress: Callable[[int, int], None] | None = None,
    ) -> Population:
        """Stores the modules of the files MX*.bin in `directory`, in one transaction; a file that
        cannot be translated is a finding. `replace`: removes the modules of which there is no file.

        `progress` is called with the files done and all files; what it raises ends the work, and
        the catalogue is as before. So does Ctrl-C.
        """
        argument = path_argument(directory)
        with self._lock, Progress(progress) as running:
            made = json_of(
                library.mxmodule_catalogue_populate,
                self._open_handle(),
                argument,
                bool(replace),
                ctypes.byref(running.observer),
            )
        return Population(
            made["inserted"],
            made["replaced"],
            made["failed"],
            tuple(one["module_id"] for one in made["removed"]),
            tuple(finding_of(one) for one in made["findings"]),
        )

    def to_dataframe(self) -> pandas.DataFrame:
        """Returns a row for each module. Raises `MissingLibrary` without pandas."""
        return self.search().to_dataframe()

    def __iter__(self) -> Iterator[CatalogueEntry]:
        return iter(self.search())

    def __len__(self) -> int:
        return len(self.search())

    def __contains__(self, module: object) -> bool:
        """Whether it has an entry, or a module with an identifier."""
        module_id = module.module_id if isinstance(module, CatalogueEntry) else module
        if not isinstance(module_id, str):
            return False
        try:
            return module in (module_id, self.find(module_id))
        except UnknownName:
            return False

    def _repr_html_(self) -> str | None:
        # None: notebooks show `repr`.
        return None if self.closed else self.search()._repr_html_()

    def _page(self, search: Search) -> tuple[list[CatalogueEntry], bool]:
        """Returns the modules that `search` asks for, and whether there are more after them."""
        has_more = ctypes.c_int()
        arguments = ctypes.byref(search), ctypes.byref(has_more)
        with self._lock:
            function = library.mxmodule_catalogue_search_page
            found = json_of(function, self._open_handle(), *arguments)
        return [entry_of(one) for one in found["devices"]], bool(has_more)

    def _each(
        self, words: str, where: Sequence[str], search: Search
    ) -> Iterator[CatalogueEntry]:
        has_more = True
        while has_more:
            found, has_more = self._page(search)
            yield from found
            if has_more:
                search = search_argument(words, where, _MODULES_OF_GROUP, found[-1])

    def _of_module(self, run: Any, function: Any, module_id: str, *arguments: Any) -> Any:
        argument = text_argument(module_id, "a module identifier")
        with self._lock:
            try:
                return run(function, self._open_handle(), argument, *arguments)
            except RequestError as failure:
                if isinstance(failure, ClosedError):
                    raise
                raise UnknownName(failure.findings) from None
