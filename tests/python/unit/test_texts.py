"""Texts of modules: of any bytes, and no markup anywhere."""

from __future__ import annotations

import html.parser
import os
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

from examples import MXTOOL, module_of, text_form
from mxmodule import InputError, Module, RequestError, Rows, Setting, Svg

_MARKUP = "<img onerror>&amp;"
_HOSTILE = f"""\
channels:
  - {{name: "{_MARKUP}", in: Bit}}
  - {{name: "\\xe2\\x82\\xac", in: Bit}}
  - {{name: "\\xe2\\x82", in: Bit}}
parameters:
  - {{name: "\\xff\\xfe", at: 0, type: UInt8, default: 1, range: [0, 9], unit: "\\xb0C"}}
  - {{name: "{_MARKUP}", at: 1, type: UInt8, default: "\\x81", options: L}}
optionLists: {{L: {{options: {{0: "\\x81", 1: "{_MARKUP}"}}}}}}
"""


class Tags(html.parser.HTMLParser):
    def __init__(self, page: str) -> None:
        super().__init__()
        self.tags: set[str] = set()
        self.text = ""
        self.feed(page)

    def handle_starttag(self, tag: str, attributes: object) -> None:
        self.tags.add(tag)

    def handle_data(self, data: str) -> None:
        self.text += data


class Bytes(unittest.TestCase):
    def setUp(self) -> None:
        self.module = module_of(_HOSTILE, label='"\\xff\\x81 \\xb110"')

    def test_texts_that_are_no_utf8_are_read_as_windows_1252(self) -> None:
        self.assertEqual(self.module.label, "ÿ\x81 ±10")
        self.assertEqual(self.module.label_bytes, b"\xff\x81 \xb110")
        names = [one.name for one in self.module.channels]
        self.assertEqual(names, [_MARKUP, "€", "â‚"])  # the second is UTF-8, the third is cut off
        raw = [self.module.channels.name_bytes[one.id] for one in self.module.channels]
        self.assertEqual(raw[1:], [b"\xe2\x82\xac", b"\xe2\x82"])

    def test_parameters_have_the_bytes_beside_the_texts(self) -> None:
        first, second = self.module.parameters.values()
        self.assertEqual((first.name, first.name_bytes), ("ÿþ", b"\xff\xfe"))
        self.assertEqual((first.unit, first.unit_bytes), ("°C", b"\xb0C"))
        self.assertEqual(second.option_bytes[0], b"\x81")
        self.assertEqual([one.text for one in second.options], ["\x81", _MARKUP])

    def test_values_are_given_as_they_are_shown(self) -> None:
        made = self.module.configure({"ÿþ": "3 °C", _MARKUP: _MARKUP})
        self.assertEqual(made.image, b"\x03\x01")
        self.assertEqual([one.value for one in made.values()], ["3 °C", _MARKUP])

    def test_the_same_is_shown_by_mxtool(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            text = os.path.join(folder, "a.yaml")
            path = os.path.join(folder, "a.bin")
            with open(text, "wb") as file:
                file.write(text_form(_HOSTILE, '"\\xff\\x81"'))
            subprocess.run([MXTOOL, "build", text, "-o", path], check=True, capture_output=True)
            module = Module.load(path)
            call = [MXTOOL, "show", "--format", "json", path]
            self.assertEqual(module.json(), subprocess.check_output(call).decode("utf-8"))
            self.assertEqual(module.json(), Module.load(text).json())


class Terminals(unittest.TestCase):
    """Messages go to terminals, which obey control characters."""

    def test_no_message_has_a_control_character(self) -> None:
        lines = """\
channels: [{name: "A\\eB", in: Bit}]
parameters: [{name: "P\\e[31m", at: 0, type: UInt8, default: 1, range: [0, 9]}]
"""
        module = module_of(lines, label='"L\\e[31m"')
        with self.assertRaises(RequestError) as raised:
            module.compose({"P\x1b[31m": 10})
        message = str(raised.exception)
        self.assertTrue(message.startswith("P\\x1b[31m: parameter"), message)
        self.assertTrue(raised.exception.place.startswith("P\x1b"))
        for shown in (message, repr(module), repr(module.parameters), repr(module.channels[0])):
            self.assertTrue(shown.isprintable(), shown)

    def test_marks_of_direction_are_shown(self) -> None:
        with self.assertRaises(InputError) as raised:
            Module.load("no\u202efile\n")
        self.assertIn("no\\u202efile\\n", str(raised.exception))


class Markup(unittest.TestCase):
    def setUp(self) -> None:
        self.module = module_of(_HOSTILE, label=f'"{_MARKUP}"')

    def test_no_text_is_markup_in_a_table(self) -> None:
        tables = (
            self.module._repr_html_(),
            self.module.parameters._repr_html_(),
            self.module.channels._repr_html_(),
            self.module.configure({_MARKUP: "#1"})._repr_html_(),
        )
        for table in tables:
            page = Tags(table)
            self.assertEqual(page.tags, {"table", "thead", "tbody", "tr", "th", "td"})
            self.assertIn(_MARKUP, page.text)

    def test_no_text_is_markup_in_a_picture_or_a_page(self) -> None:
        for picture in (self.module.svg(), self.module.channels.svg()):
            ElementTree.fromstring(picture)
            self.assertNotIn("<img", picture)
        self.assertNotIn("<img onerror", self.module.datasheet())

    def test_columns_of_rows_are_headings(self) -> None:
        setting = Setting("<b>", "&", "", "", "", False, 0, 1, 0, 0)
        table = Rows([setting], ["is_changed", "name"])._repr_html_()
        self.assertIn("<th>is changed</th><th>name</th>", table)
        self.assertIn("<td>False</td><td>&lt;b&gt;</td>", table)

    def test_a_picture_is_a_text(self) -> None:
        self.assertEqual(Svg("<svg/>"), "<svg/>")
        self.assertEqual(Svg("<svg/>")._repr_svg_(), "<svg/>")


if __name__ == "__main__":
    unittest.main()
