"""Catalogues."""

from __future__ import annotations

import copy
import os
import pathlib
import pickle
import shutil
import sqlite3
import tempfile
import unittest
from unittest import mock

from examples import FOLDER, content_of, example, path_of
from mxmodule import (
    Catalogue,
    CatalogueEntry,
    ClosedError,
    InputError,
    OutputError,
    RequestError,
    UnknownName,
    WrongType,
)


class WithFolder(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def url(self, name: str = "a.sqlite") -> str:
        return f"sqlite:{self.folder / name}"

    def files(self, *names: str) -> pathlib.Path:
        """Returns a folder with these examples."""
        folder = self.folder / "files"
        folder.mkdir(exist_ok=True)
        for name in names:
            shutil.copy(path_of(name), folder)
        return folder

    def populated(self, *names: str) -> Catalogue:
        catalogue = Catalogue.open(self.url(), create=True)
        catalogue.populate(self.files(*names))
        return catalogue


class Opening(WithFolder):
    def test_a_missing_catalogue_is_not_created_unasked(self) -> None:
        with self.assertRaises(OutputError) as raised:
            Catalogue.open(self.url())
        self.assertIn("a.sqlite", str(raised.exception))
        self.assertEqual(os.listdir(self.folder), [])
        with Catalogue.open(self.url(), create=True) as catalogue:
            self.assertEqual(len(catalogue), 0)
        self.assertEqual(len(Catalogue.open(self.url())), 0)

    def test_the_environment_says_which(self) -> None:
        with mock.patch.dict(os.environ, DEVICE_DATABASE_URL=self.url("b.sqlite")):
            catalogue = Catalogue.open(create=True)
        self.assertTrue((self.folder / "b.sqlite").exists())
        self.assertIn("b.sqlite", catalogue.name)

    def test_urls_are_of_an_engine(self) -> None:
        for wrong in ("nothing", "oracle:x", "sqlite:", "sqlite:/nowhere/at/all.sqlite"):
            with self.assertRaises((RequestError, OutputError), msg=wrong):
                Catalogue.open(wrong, create=True)
        for impossible in ("sqlite:a\0b", "sqlite:\ud800"):
            with self.assertRaises(RequestError):
                Catalogue.open(impossible)
        with self.assertRaises(WrongType):
            Catalogue.open(self.folder)

    def test_another_file_is_no_catalogue(self) -> None:
        path = self.folder / "a.sqlite"
        path.write_bytes(content_of("MX0304") * 10)
        for create in (False, True):
            with self.assertRaises(OutputError):
                Catalogue.open(self.url(), create=create)
        self.assertEqual(path.read_bytes(), content_of("MX0304") * 10)

    def test_a_closed_one_refuses_everything(self) -> None:
        catalogue = self.populated("MX0304")
        self.assertFalse(catalogue.closed)
        catalogue.close()
        catalogue.close()
        self.assertTrue(catalogue.closed)
        for use in (
            catalogue.search,
            catalogue.search_findings,
            catalogue.explain,
            lambda: list(catalogue.search_each()),
            lambda: catalogue.find("5a030304"),
            lambda: catalogue.file("5a030304"),
            lambda: catalogue.module("5a030304"),
            lambda: catalogue.remove("5a030304"),
            lambda: catalogue.populate(self.folder),
            lambda: len(catalogue),
            lambda: list(catalogue),
            lambda: "5a030304" in catalogue,
            lambda: catalogue.__enter__(),
            catalogue.to_dataframe,
        ):
            with self.assertRaises(ClosedError) as raised:
                use()
            self.assertEqual(raised.exception.place, catalogue.name)
        self.assertIn("closed", repr(catalogue))

    def test_is_closed_at_the_end_of_with(self) -> None:
        with self.assertRaises(ZeroDivisionError), self.populated("MX0304") as catalogue:
            raise ZeroDivisionError
        self.assertTrue(catalogue.closed)

    def test_is_neither_pickled_nor_copied_in_depth(self) -> None:
        catalogue = self.populated("MX0304")
        with self.assertRaises(TypeError):
            pickle.dumps(catalogue)
        with self.assertRaises(TypeError):
            copy.deepcopy(catalogue)


class Content(WithFolder):
    def test_finds_a_module(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            entry = catalogue.find("5a030304")
            label, image = example("MX0304").label, example("MX0304").default_image
            size = len(content_of("MX0304"))
            wanted = CatalogueEntry("5a030304", "kv38", label, 8, 0, image, size)
            self.assertEqual(entry, wanted)  # four channels of 16 bits
            self.assertEqual(catalogue.file("5a030304"), content_of("MX0304"))
            module = catalogue.module("5a030304", input_offset=4)
        self.assertEqual(module.json(), example("MX0304").at(input_offset=4).json())

    def test_is_a_collection_of_entries(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            self.assertEqual([one.module_id for one in catalogue], ["5a010104", "5a030304"])
            self.assertEqual(len(catalogue), 2)
            self.assertIn("5a010104", catalogue)
            self.assertNotIn("5a010105", catalogue)
            for other in (7, None, "", "x"):
                self.assertNotIn(other, catalogue)
            self.assertIn("4 DI 230 V AC", str(catalogue._repr_html_()))
            for entry in catalogue:
                self.assertIn(entry, catalogue)
                self.assertNotIn(entry._replace(label="Another"), catalogue)
        self.assertIsNone(catalogue._repr_html_())

    def test_an_unknown_module_names_those_that_there_are(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            for use in (catalogue.find, catalogue.file, catalogue.module, catalogue.remove):
                with self.assertRaises(UnknownName) as raised:
                    use("5a030305")
                self.assertIn("5a030304", str(raised.exception))
                self.assertEqual(raised.exception.accepted[0], "5a030304")
            with self.assertRaises(WrongType):
                catalogue.find(0x5A030304)
            with self.assertRaises(RequestError):
                catalogue.find("5a\0")

    def test_searches_by_words_and_conditions(self) -> None:
        with self.populated("MX0304", "MX0104", "MX0502", "MX0701") as catalogue:

            def found(words: str = "", *where: str) -> list[str]:
                return [one.module_id for one in catalogue.search(words, where)]

            self.assertEqual(found("hysteresis"), ["5a030304"])
            self.assertEqual(found("ai"), ["5a030304", "5a050502"])
            self.assertEqual(found("ai pt100"), ["5a050502"])
            self.assertEqual(found("", "in_bytes>4"), ["5a030304", "5a070701"])
            self.assertEqual(found("ai", "in_bytes>4"), ["5a030304"])
            self.assertEqual(found("", "label ~ DI"), ["5a010104"])
            self.assertEqual(len(found()), 4)
            self.assertEqual(found("nothing of this"), [])
            self.assertEqual(catalogue.search_findings("ai"), ())

    def test_conditions_are_a_list_of_texts(self) -> None:
        with self.populated("MX0304") as catalogue:
            for condition in ("", "in_bytes", "bytes>4", "in_bytes>x", "in_bytes>>4"):
                with self.assertRaises(RequestError, msg=condition):
                    catalogue.search("", [condition])
            for wrong in ("in_bytes>4", 7, None, [7], {"in_bytes>4"}):
                with self.assertRaises(WrongType):
                    catalogue.search("", wrong)
            with self.assertRaises(WrongType):
                catalogue.search(None)

    def test_gives_the_best_matches_first(self) -> None:
        # In the labels of the last two: "8 AI 4-20 mA, 2-wire" and "8 AI RTD, 2/3/4-wire".
        with self.populated("MX0304", "MX0308", "MX0508") as catalogue:
            found = [one.module_id for one in catalogue.search("WIRE")]
            self.assertEqual(found, ["5a030308", "5a050508", "5a030304"])

    def test_searches_in_pages(self) -> None:
        with self.populated("MX0304", "MX0104", "MX0502", "MX0701") as catalogue:
            for words in ("", "k38"):
                everything = catalogue.search(words)
                self.assertEqual(len(everything), 4)
                first = catalogue.search(words, limit=3)
                self.assertEqual(list(first), list(everything)[:3])
                for last in (first[2], first[2].module_id):
                    rest = catalogue.search(words, limit=3, after=last)
                    self.assertEqual(list(rest), list(everything)[3:])
                self.assertEqual(list(catalogue.search(words, after=everything[3])), [])
            self.assertEqual(len(catalogue.search("ai", ["in_bytes>4"], limit=9)), 1)

    def test_refuses_parts_of_a_list_that_there_are_not(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            with self.assertRaises(RequestError) as raised:
                catalogue.search(after="5a030305")
            self.assertEqual(raised.exception.accepted[0], "5a030304")
            with self.assertRaisesRegex(RequestError, "is in the database, but not in this list"):
                catalogue.search("hysteresis", after="5a010104")
            for limit in (0, -1, 2**32):
                with self.assertRaises(RequestError):
                    catalogue.search(limit=limit)
            for wrong in (1.5, "1", True):
                with self.assertRaises(WrongType):
                    catalogue.search(limit=wrong)
            with self.assertRaises(WrongType):
                catalogue.search(after=7)

    def test_gives_modules_one_after_the_other(self) -> None:
        with self.populated("MX0304", "MX0104", "MX0502", "MX0701") as catalogue:
            for group in (1, 2, 3, 4, 5):
                with mock.patch("mxmodule._catalogue._MODULES_OF_GROUP", group):
                    found = list(catalogue.search_each("k38"))
                self.assertEqual(found, list(catalogue.search("k38")), group)
            self.assertEqual(list(catalogue.search_each("ai", ["in_bytes>9"])), [])
            with self.assertRaises(WrongType):
                catalogue.search_each("ai", "in_bytes>9")

    def test_modules_are_read_as_they_are_wanted(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            with mock.patch("mxmodule._catalogue._MODULES_OF_GROUP", 1):
                modules = catalogue.search_each()
                self.assertEqual(next(modules).module_id, "5a010104")
                catalogue.remove("5a030304")
                self.assertEqual(list(modules), [])

    def test_explains_a_search(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            explained = catalogue.explain("Hystér", ["in_bytes>4"])
            self.assertEqual(explained.source, "index")
            self.assertEqual(explained.words, ("hyster",))
            self.assertIn("hys", explained.parts)
            self.assertEqual(explained.candidates + explained.not_indexed, 2)
            self.assertIn('Words, without case and accents: "hyster"\n', explained.text)
            self.assertEqual(str(explained), explained.text)
            in_order = catalogue.explain(limit=1)
            self.assertEqual((in_order.source, in_order.words), ("order", ()))
            self.assertIn("LIMIT 1", in_order.sql)
            with self.assertRaises(RequestError):
                catalogue.explain("", ["bytes>4"])

    def test_removes_a_module(self) -> None:
        with self.populated("MX0304", "MX0104") as catalogue:
            catalogue.remove("5a030304")
            self.assertEqual([one.module_id for one in catalogue], ["5a010104"])

    def test_a_module_stored_without_its_file_has_none(self) -> None:
        self.populated("MX0304").close()
        database = sqlite3.connect(self.folder / "a.sqlite")
        database.execute("UPDATE device_properties SET mx_file_data = ''")
        database.commit()
        database.close()
        with Catalogue.open(self.url()) as catalogue:
            self.assertEqual(catalogue.file("5a030304"), b"")
            self.assertEqual(catalogue.find("5a030304").file_bytes, 0)
            with self.assertRaises(InputError):
                catalogue.module("5a030304")


class Populating(WithFolder):
    def test_says_what_has_changed(self) -> None:
        folder = self.files("MX0304", "MX0104")
        with Catalogue.open(self.url(), create=True) as catalogue:
            first = catalogue.populate(folder)
            self.assertEqual((first.inserted, first.replaced, first.failed), (2, 0, 0))
            (folder / "MX0104.bin").unlink()
            again = catalogue.populate(folder)
            self.assertEqual((again.inserted, again.replaced, again.removed), (0, 1, ()))
            last = catalogue.populate(str(folder), replace=True)
            self.assertEqual(last.removed, ("5a010104",))
            self.assertEqual(last.findings, ())

    def test_a_damaged_file_is_a_finding(self) -> None:
        with Catalogue.open(self.url(), create=True) as catalogue:
            made = catalogue.populate(self.files("MX0304", "MX9999"))
            self.assertEqual((made.inserted, made.failed), (1, 1))
            (finding,) = [one for one in made.findings if one.severity == "error"]
            self.assertIn("MX9999.bin", finding.text)

    def test_progress_counts_the_files(self) -> None:
        told: list[tuple[int, int]] = []
        with Catalogue.open(self.url(), create=True) as catalogue:
            files = self.files("MX0304", "MX0104")
            catalogue.populate(files, progress=lambda done, total: told.append((done, total)))
        self.assertEqual({total for _, total in told}, {2})
        self.assertEqual(sorted(told), told)
        self.assertEqual(told[-1], (2, 2))

    def test_what_progress_raises_ends_the_work_without_a_change(self) -> None:
        catalogue = self.populated("MX0304")
        for raised in (ZeroDivisionError("stop"), KeyboardInterrupt(), SystemExit(3)):

            def fails(done: int, _: int) -> None:
                if done == 1:
                    raise raised

            with self.assertRaises(type(raised)) as caught:
                catalogue.populate(self.files("MX0104", "MX0502"), progress=fails)
            self.assertIs(caught.exception, raised)
            self.assertEqual([one.module_id for one in catalogue], ["5a030304"])

    def test_a_missing_folder_is_named(self) -> None:
        with Catalogue.open(self.url(), create=True) as catalogue:
            with self.assertRaises(InputError) as raised:
                catalogue.populate(self.folder / "nowhere")
            self.assertIn("nowhere", str(raised.exception))
            with self.assertRaises(WrongType):
                catalogue.populate(None)

    def test_the_examples_are_stored(self) -> None:
        with Catalogue.open(self.url(), create=True) as catalogue:
            made = catalogue.populate(FOLDER)
            files = len(list(FOLDER.glob("MX*.bin")))
            self.assertEqual(made.inserted + made.replaced + made.failed, files)
            self.assertEqual(made.failed, 1)


if __name__ == "__main__":
    unittest.main()
