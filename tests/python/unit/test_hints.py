"""Hints name what this package has, not calls of mxtool."""

from __future__ import annotations

import os
import re
import tempfile
import unittest
from typing import Any, Callable

from examples import PROJECT, PUMP_HOUSE, example, path_of
from mxmodule import Catalogue, Error, Module, Station
from mxmodule._hints import in_python

# A hint of the libraries, or the beginning of one.
_HINT = re.compile(r'"((?:make one with: )?mxtool [a-z]+ [^"]*)"')
# Of operations that this package does not have.
_ELSEWHERE = ("mxtool dump ", "mxtool new ", "mxtool serve ")



class Hints(unittest.TestCase):
    def hint_of(self, fails: Callable[[], Any]) -> str:
        with self.assertRaises(Error) as raised:
            fails()
        return raised.exception.hint

    def test_a_name_that_is_like_none_has_where_they_are(self) -> None:
        hint = "list(module.parameters) has the names"
        module = example("MX0304")
        self.assertEqual(self.hint_of(lambda: module.parameters["?"]), hint)
        self.assertEqual(self.hint_of(lambda: module.compose({"?": 1})), hint)

    def test_a_file_of_another_kind_has_what_takes_it(self) -> None:
        self.assertEqual(self.hint_of(lambda: Module.load(PUMP_HOUSE)), "Station.load takes it")
        path = path_of("MX0304")
        self.assertEqual(self.hint_of(lambda: Station.load(path)), "Module.load takes it")
        with tempfile.TemporaryDirectory() as folder:
            values = os.path.join(folder, "values.yaml")
            with open(values, "w", encoding="utf-8") as file:
                file.write(example("MX0304").configure().values_file())
            hint = self.hint_of(lambda: Module.load(values))
            self.assertEqual(hint, "Module.compose_file takes it")
        hint = self.hint_of(lambda: example("MX0304").compose_file(path))
        self.assertEqual(hint, "Configuration.values_file gives one to start from")

    def test_a_damaged_file_can_be_checked(self) -> None:
        hint = self.hint_of(lambda: Module.load(path_of("MX9999")))
        self.assertEqual(hint, "mxmodule.check(path) lists what is wrong")

    def test_a_missing_catalogue_can_be_made(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            hint = self.hint_of(lambda: Catalogue.open(f"sqlite:{folder}/none.sqlite"))
        self.assertEqual(hint, "Catalogue.open(url, create=True) makes one")

    def test_other_hints_stay(self) -> None:
        hint = "name a file in this directory"
        self.assertEqual(in_python(hint), hint)

    def test_every_hint_of_the_libraries_has_its_words(self) -> None:
        found = [
            hint
            for library in ("mxmodule", "mxstation", "mxonline")
            for path in (PROJECT / library / "src").rglob("*.cpp")
            for hint in _HINT.findall(path.read_text("utf-8"))
            if not hint.startswith(_ELSEWHERE)
        ]
        self.assertGreater(len(found), 10)
        for hint in found:
            if hint.startswith("mxtool config ") and "FILE" not in hint:
                continue
            with self.subTest(hint):
                self.assertNotIn("mxtool", in_python(hint))


if __name__ == "__main__":
    unittest.main()
