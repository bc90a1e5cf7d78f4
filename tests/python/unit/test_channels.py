"""Channels in the process images."""

from __future__ import annotations

import csv
import io
import json
import unittest
import xml.etree.ElementTree as ElementTree

from examples import example, readable_paths
from mxmodule import BitRun, Channel, Channels, Module, RequestError


class Channelled(unittest.TestCase):
    def test_has_the_values_of_the_text_form(self) -> None:
        channels = example("MX0304").channels
        self.assertIsInstance(channels, Channels)
        self.assertEqual(len(channels), 4)
        self.assertEqual([one.name for one in channels], ["AI 1", "AI 2", "AI 3", "AI 4"])
        # The fourth of 16-bit channels
        self.assertEqual(
            channels[3], Channel(channels[3].id, 3, "AI 4", "in", "IW6", "I", "W", 6, 0, 16, 255)
        )
        self.assertEqual(channels[-1], channels[3])
        self.assertEqual(channels[1:3], (channels[1], channels[2]))
        with self.assertRaises(IndexError):
            channels[4]

    def test_bits_have_their_place_in_the_byte(self) -> None:
        channels = example("MX0104").channels
        self.assertEqual([one.symbol for one in channels], ["IX0_0", "IX0_1", "IX0_2", "IX0_3"])
        self.assertEqual([one.bit_offset for one in channels], [0, 1, 2, 3])
        self.assertEqual([one.mask for one in channels], [1, 1, 1, 1])
        self.assertEqual(channels.input.size, 1)
        self.assertEqual(channels.input.free, (BitRun(byte=0, bit=4, bits=4),))
        self.assertEqual(channels.output.size, 0)

    def test_channels_in_no_image_are_listed_apart(self) -> None:
        apart = example("MX0602").channels.without_symbol
        self.assertIn("No image", [one.name for one in apart])
        self.assertNotIn("No image", [one.name for one in example("MX0602").channels])

    def test_names_have_their_bytes(self) -> None:
        channels = example("MX0304").channels
        names = [channels.name_bytes[one.id] for one in channels]
        self.assertEqual(names, [b"AI 1", b"AI 2", b"AI 3", b"AI 4"])

    def test_is_kept_by_its_module(self) -> None:
        self.assertIs(example("MX0304").channels, example("MX0304").channels)

    def test_members_are_those_of_the_json(self) -> None:
        for path in readable_paths():
            channels = Module.load(path).channels
            read = json.loads(channels.json())
            self.assertEqual(read["schema"]["name"], "mxtool.channels")
            self.assertEqual(len(channels), len(read["channels"]))
        for channel, values in zip(channels, read["channels"]):
                self.assertEqual(list(channel), list(values.values()))
                names = [name.replace("iec_", "") for name in values]
                self.assertEqual(list(channel._fields), names)

    def test_forms_of_the_table(self) -> None:
        channels = example("MX0602").channels
        rows = list(csv.reader(io.StringIO(channels.csv())))
        self.assertEqual(rows, list(csv.reader(io.StringIO(channels.csv(";")), delimiter=";")))
        self.assertEqual(channels.csv("\t", byte_order_mark=True)[0], "\ufeff")
        self.assertIn("VAR_GLOBAL", channels.declarations())
        self.assertIn("Count 1", channels.text())
        with self.assertRaises(RequestError):
            channels.csv("x")

    def test_pictures(self) -> None:
        channels = example("MX0602").channels
        picture = ElementTree.fromstring(channels.svg())
        self.assertEqual(picture.tag, "{http://www.w3.org/2000/svg}svg")
        self.assertNotIn("\x1b", channels.drawing())
        self.assertIn("\x1b[", channels.drawing(coloured=True))


if __name__ == "__main__":
    unittest.main()
