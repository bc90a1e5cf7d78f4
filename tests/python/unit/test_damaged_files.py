"""Files that are cut off or changed: always an exception or a module, never a crash."""

from __future__ import annotations

import unittest

from examples import FOLDER, content_of, path_of
from mxmodule import InputError, Module


class DamagedFiles(unittest.TestCase):
    def test_an_example_cut_at_each_length_is_an_error_with_its_name(self) -> None:
        content = content_of("MX0502")
        # Its last byte ends an empty group; readers do without it.
        for length in range(len(content) - 1):
            with self.assertRaises(InputError, msg=f"{length} bytes") as raised:
                Module.from_bytes(content[:length], "cut.bin")
            self.assertIn("cut.bin", str(raised.exception))

    def test_a_text_form_cut_at_each_line_is_an_error_or_a_module(self) -> None:
        lines = (FOLDER / "MX0304.yaml").read_bytes().splitlines(keepends=True)
        for count in range(len(lines)):
            try:
                Module.from_bytes(b"".join(lines[:count]), "cut.yaml")
            except InputError as failure:
                self.assertIn("cut.yaml", str(failure))

    def test_each_byte_inverted_is_an_error_or_a_module(self) -> None:
        content = bytearray(content_of("MX0104"))
        for place in range(len(content)):
            content[place] ^= 0xFF
            try:
                module = Module.from_bytes(content, "changed.bin")
                module.text()
                module.channels.svg()
                module.compose()
            except InputError as failure:
                self.assertTrue(failure.text)
            content[place] ^= 0xFF

    def test_the_damaged_example_says_what_is_wrong(self) -> None:
        with self.assertRaises(InputError) as raised:
            Module.load(path_of("MX9999"))
        self.assertIn("Truncated mx buffer", raised.exception.text)
        self.assertEqual(raised.exception.place, path_of("MX9999"))
        self.assertTrue(raised.exception.hint)

    def test_nothing_is_no_module(self) -> None:
        with self.assertRaises(InputError):
            Module.from_bytes(b"", "empty.bin")


if __name__ == "__main__":
    unittest.main()
