"""Lists of rows: found by position, by name and by members, compared and shown."""

from __future__ import annotations

import unittest

import mxmodule
from examples import content_of, example, module_of
from mxmodule import Module, UnknownName, WrongType

# Three channels, of which two have the same name.
_CHANNELS = """\
channels:
  - {name: Level, in: UInt8}
  - {name: Speed, in: UInt8}
  - {name: Speed, in: UInt8}
"""


class Finding(unittest.TestCase):
    def test_a_row_is_found_by_its_name(self) -> None:
        channels = example("MX0304").channels
        self.assertEqual(channels["AI 3"].symbol, "IW4")
        self.assertEqual(channels["AI 3"], channels[2])
        self.assertIn("AI 3", channels)
        self.assertNotIn("AI 5", channels)

    def test_an_unknown_name_has_the_nearest(self) -> None:
        with self.assertRaises(UnknownName) as raised:
            example("MX0304").channels["AI_3"]
        self.assertEqual(raised.exception.accepted[0], "AI 3")
        self.assertEqual(raised.exception.place, "AI_3")

    def test_an_ambiguous_name_is_refused(self) -> None:
        channels = module_of(_CHANNELS).channels
        with self.assertRaises(UnknownName) as raised:
            channels["Speed"]
        self.assertEqual(raised.exception.hint, 'where(name="...") has all of them')
        self.assertEqual(channels.where(name="Speed"), [channels[1], channels[2]])

    def test_rows_are_found_by_their_members(self) -> None:
        channels = module_of(_CHANNELS).channels
        self.assertEqual(channels.where(name="Speed", byte=2), channels[2:])
        self.assertEqual(channels.where(), channels)
        self.assertEqual(len(channels.where(direction="out")), 0)
        with self.assertRaises(UnknownName) as raised:
            channels.where(nmae="Speed")
        self.assertIn("name", raised.exception.accepted)

    def test_a_part_is_rows_too(self) -> None:
        part = example("MX0304").channels[1:3]
        self.assertEqual([one.name for one in part], ["AI 2", "AI 3"])
        self.assertIn("<td>AI 2</td>", part._repr_html_())

    def test_other_indices_are_refused(self) -> None:
        rows = example("MX0304").channels
        for other in (1.0, None, b"AI 1"):
            with self.assertRaises(WrongType):
                rows[other]  # type: ignore
        with self.assertRaises(IndexError):
            rows[4]


class Comparing(unittest.TestCase):
    def test_the_same_rows_are_equal(self) -> None:
        again = Module.from_bytes(content_of("MX0304")).channels
        channels = example("MX0304").channels
        self.assertEqual(channels, again)
        self.assertEqual(hash(channels), hash(again))
        self.assertEqual(channels, tuple(again))
        self.assertEqual(channels, list(again))
        self.assertNotEqual(channels, again[:3])
        self.assertNotEqual(channels, "AI 1")


class Showing(unittest.TestCase):
    def test_rows_are_shown_and_the_rest_is_counted(self) -> None:
        lines = repr(example("MX0304").channels).splitlines()
        self.assertEqual(lines[0], "<Channels of 4:")
        self.assertTrue(lines[2].startswith("  Channel(id='45', number=1, name='AI 2'"))
        rules = mxmodule.check_rules()
        self.assertEqual(repr(rules).splitlines()[-1], f"  and {len(rules) - 10} more>")
        self.assertEqual(repr(rules[:0]), "<Rows of 0>")

    def test_comparisons_are_tables(self) -> None:
        module = example("MX0701")
        found = module.configure({"Parity": "odd"}).compare(module.configure())
        self.assertIn("<td>odd</td>", found._repr_html_())


if __name__ == "__main__":
    unittest.main()
