"""Data frames, and what happens without pandas."""

from __future__ import annotations

import shutil
import sys
import tempfile
import unittest
from unittest import mock

from examples import example, path_of
from mxmodule import Catalogue, Channel, MissingLibrary, channels_dataframe, check, check_rules


class DataFrames(unittest.TestCase):
    def test_channels(self) -> None:
        frame = example("MX0304").channels.to_dataframe()
        self.assertEqual(list(frame.columns), list(Channel._fields))
        self.assertEqual(list(frame["name"]), ["AI 1", "AI 2", "AI 3", "AI 4"])
        self.assertEqual(list(frame["byte"]), [0, 2, 4, 6])
        self.assertEqual(str(frame["byte"].dtype), "int64")

    def test_channels_of_several_modules(self) -> None:
        frame = channels_dataframe(example(name) for name in ("MX0304", "MX0001", "MX0104"))
        self.assertEqual(list(frame.columns), ["module_id", "label", *Channel._fields])
        self.assertEqual(list(frame["module_id"]), ["5a030304"] * 4 + ["5a010104"] * 4)
        self.assertEqual(frame["label"][4], "4 DI 230 V AC")
        self.assertEqual(list(frame["symbol"][4:]), ["IX0_0", "IX0_1", "IX0_2", "IX0_3"])
        self.assertEqual(len(channels_dataframe([])), 0)
        self.assertEqual(len(channels_dataframe([example("MX0001")])), 0)

    def test_parameters_and_settings(self) -> None:
        frame = example("MX0701").parameters.to_dataframe()
        self.assertEqual(list(frame["value"][:4]), ["9600", "even", "1", "250 ms"])
        self.assertEqual(frame["number"][3], 250.0)
        self.assertEqual(list(frame[frame["maximum"] > 60000]["call_name"]), ["Serial number"])
        settings = example("MX0701").configure({"Parity": "odd"}).to_dataframe()
        self.assertEqual(list(settings[settings["is_changed"]]["name"]), ["Parity"])
        self.assertEqual(list(settings["number"][1:3]), [2.0, 0.0])
        self.assertEqual(len(example("MX0001").parameters.to_dataframe()), 0)

    def test_catalogues_and_checks(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            with Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True) as catalogue:
                for name in ("MX0304", "MX0104"):
                    shutil.copy(path_of(name), folder)
                catalogue.populate(folder)
                frame = catalogue.to_dataframe()
                self.assertEqual(list(frame["module_id"]), [one.module_id for one in catalogue])
                found = catalogue.search("hysteresis").to_dataframe()
                self.assertEqual(list(found["module_id"]), ["5a030304"])
        self.assertEqual(len(check(path_of("MX0104")).to_dataframe()), 0)
        self.assertEqual(len(check_rules().to_dataframe()), len(check_rules()))

    def test_numbers_of_a_frame_are_values_and_offsets(self) -> None:
        import pandas

        frame = pandas.DataFrame({"timeout": [17, 18], "offset": [4, 6], "limit": [2.5, 3.5]})
        image = example("MX0701").compose({"Receive timeout": frame["timeout"][1]})
        self.assertEqual(image[2:4], b"\x00\x12")
        module = example("MX0304").at(input_offset=frame["offset"][0])
        self.assertEqual(module.channels.input.first_byte, 4)
        image = module.compose({"AI 1/Upper limit": frame["limit"][0]})
        self.assertEqual(image[2:4], (2500).to_bytes(2, "big"))

    def test_without_pandas_it_is_named(self) -> None:
        with mock.patch.dict(sys.modules, pandas=None):
            for make in (
                example("MX0304").channels.to_dataframe,
                example("MX0304").parameters.to_dataframe,
                example("MX0304").configure().to_dataframe,
                check_rules().to_dataframe,
                lambda: channels_dataframe([example("MX0304")]),
            ):
                with self.assertRaises(MissingLibrary) as raised:
                    make()
                self.assertEqual(raised.exception.place, "pandas")
                self.assertIn("python3-pandas", raised.exception.hint)
                self.assertIsInstance(raised.exception, ImportError)


if __name__ == "__main__":
    unittest.main()
