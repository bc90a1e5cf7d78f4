"""Checks of mx files."""

from __future__ import annotations

import json
import pathlib
import shutil
import tempfile
import unittest

from examples import FOLDER, content_of, path_of
from mxmodule import (
    CheckFinding,
    CheckRule,
    InputError,
    RequestError,
    WrongType,
    check,
    check_rules,
    check_sarif,
)


class Checks(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def test_a_good_file_has_no_findings(self) -> None:
        self.assertEqual(list(check(path_of("MX0104"), FOLDER / "MX0104.yaml")), [])
        self.assertEqual(list(check()), [])

    def test_a_missing_byte_breaks_the_framing(self) -> None:
        path = self.folder / "cut.bin"
        path.write_bytes(content_of("MX0104")[:-1])
        (found,) = check(str(path), path_of("MX0104"))
        size = len(content_of("MX0104"))
        self.assertEqual((found.file, found.rule, found.severity), (str(path), "framing", "error"))
        self.assertEqual(found.text, f"content length {size}, the file has {size - 1} bytes")
        self.assertEqual((found.line, found.column, found.offset), (None, None, 0))
        self.assertEqual(found.place, f"{path}:0x000000")
        self.assertEqual(str(found), f"{path}:0x000000: error: [framing] {found.text}")

    def test_a_finding_in_a_text_has_its_line(self) -> None:
        path = self.folder / "a.yaml"
        shutil.copy(FOLDER / "MX0104.svg", self.folder)
        text = (FOLDER / "MX0104.yaml").read_text("utf-8")
        changed = text.replace("default: 0, range: [0, 1]", "default: 0, range: [1, 1]", 1)
        path.write_text(changed, "utf-8")
        found = check(path)[0]
        self.assertEqual(found.line, 1 + changed[: changed.index("[1, 1]")].count("\n"))
        self.assertEqual(found.place, f"{path}:{found.line}:{found.column}")
        self.assertIn("Invert", str(found))

    def test_members_are_those_of_the_json(self) -> None:
        self.assertEqual(check(path_of("MX9999"))._columns, CheckFinding._fields)
        rules = json.loads(json.dumps([one._asdict() for one in check_rules()]))
        self.assertEqual(list(rules[0]), list(CheckRule._fields))

    def test_a_finding_names_a_rule_of_the_list(self) -> None:
        rules = {one.name: one for one in check_rules()}
        for found in check(path_of("MX9999")):
            self.assertEqual(rules[found.rule].severity, found.severity)
            self.assertTrue(rules[found.rule].explanation)

    def test_sarif_has_the_same_findings(self) -> None:
        report = json.loads(check_sarif(path_of("MX9999")))
        self.assertEqual(report["version"], "2.1.0")
        rules = [one["ruleId"] for one in report["runs"][0]["results"]]
        self.assertEqual(rules, [one.rule for one in check(path_of("MX9999"))])

    def test_a_missing_file_is_an_error(self) -> None:
        for function in (check, check_sarif):
            with self.assertRaises(InputError) as raised:
                function(path_of("MX0304"), "/nowhere/a.bin")
            self.assertIn("/nowhere/a.bin", str(raised.exception))

    def test_paths_have_to_be_paths(self) -> None:
        with self.assertRaises(WrongType):
            check(7)
        with self.assertRaises(RequestError):
            check("a\0b")


if __name__ == "__main__":
    unittest.main()
