"""Values into images and registers."""

from __future__ import annotations

import os
import tempfile
import unittest
import warnings
from decimal import Decimal
from fractions import Fraction
from typing import Any

from examples import example
from mxmodule import InputError, RequestError, SideEffectWarning, WrongType

# examples/modules/MX0701.yaml: baud rate, parity and stop bits in one byte, timeout, serial number
IMAGE = bytes.fromhex("03 01 00fa eeddef0b82167eeb")
# On Modbus an option is its place in the list, 8-bit values are in the high byte, and each bit
# field has a register.
REGISTERS = [0x0100, 0x0100, 0x0000, 0x00FA, 0xEEDD, 0xEF0B, 0x8216, 0x7EEB]


class Images(unittest.TestCase):
    def test_no_values_give_the_default(self) -> None:
        self.assertEqual(example("MX0701").compose(), IMAGE)
        self.assertEqual(example("MX0701").compose({}), IMAGE)

    def test_values_are_written_at_their_place(self) -> None:
        values = {"Baud rate": "115200", "Parity": "odd", "Stop bits": "#1"}
        image = example("MX0701").compose({**values, "Receive timeout": 1000})
        # 8; odd 2 in bits 0 and 1, the second option in bit 4; 1000 is 03e8
        self.assertEqual(image.hex(), "0812" "03e8" "eeddef0b82167eeb")

    def test_numbers_of_every_kind_are_the_same(self) -> None:
        module = example("MX0304")
        wanted = module.compose({"AI 1/Upper limit": "2.5 V"})
        self.assertEqual(wanted[2:4], (2500).to_bytes(2, "big"))
        for value in (2.5, Decimal("2.5"), Decimal("25E-1"), "2.5", "2.5 V", "2.50"):
            self.assertEqual(module.compose({"AI 1/Upper limit": value}), wanted, repr(value))
        self.assertEqual(module.compose({"AI 1/Upper limit": 2})[2:4], (2000).to_bytes(2, "big"))

    def test_large_and_small_numbers_keep_their_digits(self) -> None:
        module = example("MX0990")
        for value in (2**64 - 1, Decimal(2**64 - 1), Decimal("1.8446744073709551615E19")):
            self.assertEqual(module.compose({"UInt64 with range": value})[:8], b"\xff" * 8)
        self.assertEqual(module.compose({"SInt64 with range": -(2**63)})[8:16], b"\x80" + bytes(7))
        # 1e16 and 1e-05 are what Python writes for these.
        image = module.compose({"UInt64 with range": 1e16})
        self.assertEqual(image[:8], (10**16).to_bytes(8, "big"))
        with self.assertWarns(SideEffectWarning):
            self.assertEqual(example("MX0304").compose({"AI 1/Upper limit": 1e-05})[2:4], bytes(2))

    def test_an_image_is_changed_where_values_are(self) -> None:
        module = example("MX0701")
        image = bytes.fromhex("05 00 0001 0000000000000001")
        for given in (image, bytearray(image), memoryview(image)):
            made = module.compose({"Parity": "odd"}, image=given)
            self.assertEqual(made.hex(), "05" "02" "0001" "0000000000000001")
        self.assertEqual(module.compose(image=image), image)

    def test_an_image_has_the_size_of_the_default(self) -> None:
        for size in (0, 11, 13, 300):
            with self.assertRaises(InputError, msg=str(size)):
                example("MX0701").compose(image=bytes(size))

    def test_modbus_has_the_high_byte_first(self) -> None:
        data = example("MX0701").compose(fieldbus="modbus")
        self.assertEqual(data, b"".join(one.to_bytes(2, "big") for one in REGISTERS))

    def test_registers_are_numbers(self) -> None:
        module = example("MX0701")
        self.assertEqual(module.registers(), REGISTERS)
        self.assertEqual(module.registers(IMAGE), REGISTERS)
        self.assertEqual(module.registers(bytearray(IMAGE)), REGISTERS)
        changed = [0x0300, *REGISTERS[1:]]
        self.assertEqual(module.registers({"Baud rate": "115200"}), changed)  # the fourth option
        self.assertEqual(module.registers({"Baud rate": "115200"}, image=IMAGE), changed)

    def test_registers_take_one_image(self) -> None:
        with self.assertRaises(WrongType):
            example("MX0701").registers(IMAGE, image=IMAGE)

    def test_a_module_without_parameters_has_an_empty_image(self) -> None:
        module = example("MX0001")
        self.assertEqual((module.compose(), module.registers()), (b"", []))
        self.assertEqual(module.compose(fieldbus="modbus"), b"")
        self.assertEqual(module.compose(image=b""), b"")

    def test_an_image_without_modbus_form_says_why(self) -> None:
        module = example("MX0701")
        with self.assertWarns(SideEffectWarning):
            raw = module.compose({"Baud rate": 9}, force=True)  # no option has the number 9
        self.assertEqual(raw[0], 9)
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            for fails in (
                lambda: module.compose({"Baud rate": 9}, force=True, fieldbus="modbus"),
                lambda: module.registers({"Baud rate": 9}, force=True),
                lambda: module.registers(raw),
            ):
                with self.assertRaises(InputError) as raised:
                    fails()
                self.assertIn("Baud rate", str(raised.exception))


class Refusals(unittest.TestCase):
    def refused(self, values: Any, **options: Any) -> RequestError:
        with self.assertRaises(RequestError) as raised:
            example("MX0304").compose(values, **options)
        return raised.exception

    def test_a_value_outside_the_range_has_place_and_range(self) -> None:
        failure = self.refused({"AI 1/Upper limit": 10.1})
        self.assertEqual(failure.place, "AI 1/Upper limit")
        self.assertEqual(failure.accepted, ("-10 to 10 V",))
        self.assertIn('"10.1" is not accepted', failure.text)

    def test_an_unknown_option_has_all_of_them(self) -> None:
        failure = self.refused({"AI 1/Signal range": "4-20mA"})
        self.assertEqual(failure.accepted, ("±10 V", "0-10 V", "0-20 mA", "4-20 mA", "off"))
        self.assertIn('did you mean "4-20 mA"', failure.text)

    def test_everything_that_is_wrong_is_named_at_once(self) -> None:
        failure = self.refused({"Mains suppression": 61, "AI 1/Upper": 1, "AI 2/Upper limit": "x"})
        places = {one.place for one in failure.findings}
        self.assertEqual(places, {"Mains suppression", "AI 1/Upper", "AI 2/Upper limit"})

    def test_one_parameter_is_given_once(self) -> None:
        self.refused({"AI 1/Upper limit": 1, "0/Upper limit": 2})

    def test_numbers_that_are_none_are_refused(self) -> None:
        decimals = [Decimal(one) for one in ("NaN", "sNaN", "-Infinity")]
        for value in (float("nan"), float("inf"), *decimals):
            failure = self.refused({"AI 1/Upper limit": value})
            self.assertEqual(failure.place, "AI 1/Upper limit", repr(value))

    def test_enormous_numbers_are_refused(self) -> None:
        # The digits of the first take minutes.
        for value in (1 << 4000000, -(10**5000), 1e308, Decimal("1E+999999"), Decimal("1E-999999")):
            failure = self.refused({"AI 1/Upper limit": value})
            self.assertLess(len(str(failure)), 20000)

    def test_other_types_are_refused(self) -> None:
        for value in (True, None, b"2", [2], 1j, Fraction(1, 2)):
            with self.assertRaises(WrongType) as raised:
                example("MX0304").compose({"AI 1/Upper limit": value})
            self.assertEqual(raised.exception.place, "AI 1/Upper limit")
            self.assertEqual(raised.exception.accepted, ("str", "float", "Decimal", "int"))

    def test_texts_without_utf8_and_with_nul_are_refused(self) -> None:
        for text in ("a\0b", "\ud800"):
            self.refused({"AI 1/Upper limit": text})
            self.refused({text: 1})

    def test_values_are_a_mapping_by_name(self) -> None:
        for wrong in ([("AI 1/Upper limit", 1)], "AI 1/Upper limit", None, {7: 1}, {b"x": 1}):
            with self.assertRaises(WrongType, msg=repr(wrong)):
                example("MX0304").compose(wrong)

    def test_images_are_bytes(self) -> None:
        for wrong in ("00", 7, [0]):
            with self.assertRaises(WrongType):
                example("MX0304").compose(image=wrong)

    def test_the_fieldbus_is_one_of_two(self) -> None:
        failure = self.refused({}, fieldbus="profinet")
        self.assertEqual(failure.accepted, ("raw", "modbus"))
        with self.assertRaises(WrongType):
            example("MX0304").compose(fieldbus=1)


class SideEffects(unittest.TestCase):
    def test_rounding_is_a_warning_at_the_call(self) -> None:
        with self.assertWarnsRegex(SideEffectWarning, "1.235") as warned:
            image = example("MX0304").compose({"AI 1/Upper limit": "1.23456 V"})
        self.assertEqual(image[2:4], (1235).to_bytes(2, "big"))
        self.assertEqual(warned.filename, __file__)

    def test_every_way_to_compose_warns_at_the_call(self) -> None:
        module, values = example("MX0304"), {"AI 1/Upper limit": 1.23456}
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "values.yaml")
            with open(path, "w", encoding="utf-8") as file:
                file.write("AI 1/Upper limit: 1.23456\n")
            with self.assertWarns(SideEffectWarning) as warned:
                module.compose_file(path)
            self.assertEqual(warned.filename, __file__)
        for run in (module.compose, module.registers, module.configure):
            with self.assertWarns(SideEffectWarning) as warned:
                run(values)
            self.assertEqual(warned.filename, __file__, run.__name__)

    def test_force_accepts_with_a_warning(self) -> None:
        with self.assertWarnsRegex(SideEffectWarning, "forced"):
            image = example("MX0304").compose({"AI 1/Upper limit": 10.1}, force=True)
        self.assertEqual(image[2:4], (10100).to_bytes(2, "big"))

    def test_force_accepts_no_number_that_does_not_fit(self) -> None:
        with self.assertRaises(RequestError):
            example("MX0304").compose({"AI 1/Upper limit": 32.768}, force=True)  # 32767 at most

    def test_a_warning_that_is_an_error_is_raised(self) -> None:
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            with self.assertRaises(SideEffectWarning):
                example("MX0304").compose({"AI 1/Upper limit": 1.23456})

    def test_nothing_warns_without_a_side_effect(self) -> None:
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            example("MX0304").compose({"AI 1/Upper limit": 1.234})


class ValueFiles(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def write(self, name: str, content: str) -> str:
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(content)
        return path

    def test_every_form_is_read_again(self) -> None:
        module = example("MX0701")
        made = module.configure({"Parity": "odd", "Receive timeout": 17})
        files = {"a.yaml": made.values_file(), "a.json": made.json(), "a.csv": made.csv(";")}
        for name, content in files.items():
            self.assertEqual(module.compose_file(self.write(name, content)), made.image, name)

    def test_modbus_and_force(self) -> None:
        path = self.write("a.yaml", "Receive timeout: 65000\n")
        with self.assertRaises(InputError):
            example("MX0701").compose_file(path)
        with self.assertWarns(SideEffectWarning):
            data = example("MX0701").compose_file(path, fieldbus="modbus", force=True)
        self.assertEqual(data[6:8], (65000).to_bytes(2, "big"))

    def test_an_error_has_its_line(self) -> None:
        path = self.write("a.yaml", "Parity: odd\nParty: odd\n")
        with self.assertRaises(InputError) as raised:
            example("MX0701").compose_file(path)
        self.assertTrue(raised.exception.place.startswith(f"{path}:2"), raised.exception.place)

    def test_a_missing_file_is_named(self) -> None:
        missing = os.path.join(self.folder, "no.yaml")
        for path in (missing, missing.encode(), self.folder):
            with self.assertRaises(InputError) as raised:
                example("MX0701").compose_file(path)
            self.assertEqual(raised.exception.place, os.fsdecode(path))

    def test_a_file_may_have_any_content(self) -> None:
        path = os.path.join(self.folder, "a.yaml")
        for content in (b"\xff\xfe", b"\0", b"[" * 100000, b"a: &a [*a]\n"):
            with open(path, "wb") as file:
                file.write(content)
            with self.assertRaises((InputError, RequestError), msg=repr(content[:9])):
                example("MX0701").compose_file(path)


if __name__ == "__main__":
    unittest.main()
