"""Parameters and their names."""

from __future__ import annotations

import unittest
from decimal import Decimal

from examples import example, module_of
from mxmodule import Error, Option, Place, RequestError, UnknownName, WrongType


class Parameters(unittest.TestCase):
    def test_has_the_values_of_the_text_form(self) -> None:
        one = example("MX0304").parameters["AI 1/Upper limit"]
        self.assertEqual((one.name, one.call_name), ("Upper limit", "AI 1/Upper limit"))
        self.assertEqual((one.channel, one.type), (0, "SInt16"))
        # 9500 × 0.001 V, in the range -10000 to 10000
        self.assertEqual((one.value, one.digits, one.unit), ("9.5 V", "9.5", "V"))
        self.assertEqual((one.minimum, one.maximum), ("-10", "10"))
        self.assertEqual(one.place, Place(byte=2, size=2, bit_offset=0, bit_length=0))
        self.assertTrue(one.is_physical)
        self.assertTrue(one.is_accepted)
        self.assertFalse(one.has_options)
        self.assertEqual((one.options, one.option_bytes), ((), ()))

    def test_a_conversion_has_an_offset(self) -> None:
        one = example("MX0304").parameters["AI 1/Hysteresis"]
        # 60 × 0.1 % - 5 %, in the range 0 to 1000
        self.assertEqual((one.value, one.minimum, one.maximum), ("1 %", "-5", "95"))

    def test_a_parameter_of_the_module_has_no_channel(self) -> None:
        one = example("MX0304").parameters["Mains suppression"]
        self.assertEqual((one.channel, one.value, one.is_physical), (None, "50 Hz", False))

    def test_a_bit_field_has_its_bits(self) -> None:
        one = example("MX0304").parameters["AI 2/Filter depth"]
        self.assertEqual(one.place, Place(byte=16, size=1, bit_offset=1, bit_length=3))
        self.assertEqual((one.value, one.maximum), ("1", "7"))

    def test_flags_are_bits_0_and_1(self) -> None:
        parameters = example("MX0304").parameters
        self.assertEqual(parameters["AI 1/Hysteresis"].flags, (True, False))  # 5
        self.assertEqual(parameters["AI 1/Filter depth"].flags, (False, True))  # 2

    def test_options_are_in_the_order_of_the_list(self) -> None:
        one = example("MX0304").parameters["AI 4/Signal range"]
        self.assertTrue(one.has_options)
        texts = ["±10 V", "0-10 V", "0-20 mA", "4-20 mA", "off"]
        self.assertEqual([option.text for option in one.options], texts)
        self.assertEqual([option.value for option in one.options], ["0", "1", "2", "3", "9"])
        self.assertEqual(one.options[4], Option("off", "9", True, "off"))
        self.assertEqual([option.is_current for option in one.options], [False] * 4 + [True])
        self.assertEqual(one.option_bytes[0], b"\xb110 V")

    def test_an_option_whose_text_is_a_number_of_another_is_called_by_its_number(self) -> None:
        module = module_of(
            "parameters: [{name: A, at: 0, type: UInt8, default: 1, options: L}]\n"
            'optionLists: {L: {options: {1: "2", 2: "1", 3: "x"}}}\n'
        )
        options = module.parameters["A"].options
        self.assertEqual([one.call_text for one in options], ["#1", "#2", "x"])
        for option in options:
            self.assertEqual(module.compose({"A": option.call_text}), bytes([int(option.value)]))

    def test_a_default_outside_the_range_is_not_accepted(self) -> None:
        parameter = "{name: A, at: 0, type: UInt8, default: 9, range: [0, 5]}"
        module = module_of(f"parameters: [{parameter}]\n")
        self.assertFalse(module.parameters["A"].is_accepted)

    def test_a_flag_of_acceptance_is_false_without_such_an_option(self) -> None:
        module = module_of(
            "parameters: [{name: A, at: 0, type: UInt8, default: 7, options: L}]\n"
            "optionLists: {L: {options: {1: one}}}\n"
        )
        one = module.parameters["A"]
        self.assertFalse(one.is_accepted)
        self.assertEqual([option.is_current for option in one.options], [False])

    def test_is_shown_with_name_and_value(self) -> None:
        parameters = example("MX0304").parameters
        self.assertEqual(repr(parameters), "<Parameters of 25>")
        shown = repr(parameters["AI 1/Upper limit"])
        self.assertEqual(shown, "<Parameter 'AI 1/Upper limit': 9.5 V>")
    def test_numbers_are_in_the_unit(self) -> None:
        limit = example("MX0304").parameters["AI 1/Upper limit"]
        self.assertEqual(limit.number, Decimal("9.5"))
        self.assertEqual(limit.range, (Decimal("-10"), Decimal("10")))
        setting = example("MX0304").configure({"AI 1/Upper limit": 2.25})["AI 1/Upper limit"]
        self.assertEqual(setting.number, Decimal("2.25"))


class OfChannels(unittest.TestCase):
    def test_a_channel_has_its_parameters(self) -> None:
        module = example("MX0304")
        own = module.parameters.of_channel(module.channels["AI 2"])
        self.assertEqual([one.channel for one in own], [1] * 6)
        self.assertEqual(own[1], module.parameters["AI 2/Upper limit"])
        self.assertEqual(module.parameters.of_channel(1), own)
        self.assertEqual(module.parameters.of_channel(99), [])

    def test_the_module_has_its_own(self) -> None:
        (own,) = example("MX0304").parameters.of_channel(None)
        self.assertEqual(own.name, "Mains suppression")

    def test_a_channel_is_no_text(self) -> None:
        with self.assertRaises(WrongType):
            example("MX0304").parameters.of_channel("AI 2")  # type: ignore


class Names(unittest.TestCase):
    def test_every_kind_of_name_finds_the_same(self) -> None:
        parameters = example("MX0304").parameters
        wanted = parameters["AI 1/Upper limit"].id
        for name in ("0/Upper limit", f"#{wanted}", "0 AI 1/Upper limit"):
            self.assertEqual(parameters[name].id, wanted, name)
        self.assertEqual(parameters["module/Mains suppression"].name, "Mains suppression")

    def test_is_a_mapping_in_the_order_of_the_device(self) -> None:
        parameters = example("MX0701").parameters
        names = ["Baud rate", "Parity", "Stop bits", "Receive timeout", "Serial number"]
        self.assertEqual(list(parameters), names)
        self.assertEqual([one.name for one in parameters.values()], names)
        self.assertEqual(len(parameters), 5)
        self.assertIn("Parity", parameters)
        self.assertNotIn("Party", parameters)
        self.assertIsNone(parameters.get("Party"))

    def test_what_is_no_text_is_in_no_mapping(self) -> None:
        for mapping in (example("MX0701").parameters, example("MX0701").configure()):
            for other in (7, None, "\ud800", "a\0b"):
                self.assertFalse(other in mapping, repr(other))

    def test_every_parameter_is_found_by_its_call_name(self) -> None:
        for name in ("MX0304", "MX0502", "MX0990", "MX0602"):
            parameters = example(name).parameters
            for call_name, one in parameters.items():
                self.assertEqual(parameters[f"#{one.id}"].call_name, call_name)
                self.assertIs(parameters[call_name], one)

    def test_an_unknown_name_has_the_nearest(self) -> None:
        with self.assertRaises(UnknownName) as raised:
            example("MX0304").parameters["AI 1/Uper limit"]
        self.assertEqual(raised.exception.place, "AI 1/Uper limit")
        self.assertEqual(raised.exception.accepted[0], "AI 1/Upper limit")
        self.assertTrue(raised.exception.hint)

    def test_an_ambiguous_name_has_those_that_it_means(self) -> None:
        with self.assertRaises(UnknownName) as raised:
            example("MX0304").parameters["Upper limit"]
        accepted = tuple(f"AI {number}/Upper limit" for number in (1, 2, 3, 4))
        self.assertEqual(raised.exception.accepted, accepted)

    def test_unknown_names_are_errors_of_every_kind_that_one_expects(self) -> None:
        for kind in (KeyError, ValueError, RequestError, Error):
            with self.assertRaises(kind) as raised:
                example("MX0304").parameters["Nothing"]
            self.assertIn('No parameter is called "Nothing"', str(raised.exception))

    def test_names_have_to_be_texts(self) -> None:
        for wrong in (0, None, b"Parity", ("a", "b")):
            with self.assertRaises(WrongType):
                example("MX0701").parameters[wrong]
        for impossible in ("a\0b", "\ud800"):
            with self.assertRaises(RequestError):
                example("MX0701").parameters[impossible]


if __name__ == "__main__":
    unittest.main()
