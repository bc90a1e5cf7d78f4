"""Configurations: images and registers that are decoded, compared, written as texts."""

from __future__ import annotations

import csv
import gc
import io
import json
import unittest

from examples import example, module_of
from mxmodule import (
    Deviation,
    Error,
    InputError,
    RequestError,
    Setting,
    UnknownName,
    WrongType,
)

# examples/modules/MX0701.yaml with the baud rate 19200 and the timeout 1 ms
READ = bytes.fromhex("05 01 0001 eeddef0b82167eeb")


class Configurations(unittest.TestCase):
    def test_has_a_setting_for_each_parameter(self) -> None:
        made = example("MX0701").decode(READ)
        names = ["Baud rate", "Parity", "Stop bits", "Receive timeout", "Serial number"]
        self.assertEqual(list(made), names)
        self.assertEqual(
            made["Baud rate"], Setting("Baud rate", "19200", "5", "", "9600", True, 0, 1, 0, 0)
        )
        timeout = Setting("Receive timeout", "1 ms", "1", "ms", "250 ms", True, 2, 2, 0, 0)
        self.assertEqual(made["Receive timeout"], timeout)
        parity = Setting("Parity", "even", "1", "", "even", False, 1, 1, 0, 2)
        self.assertEqual(made["Parity"], parity)
        self.assertEqual(made["Serial number"].digits, "-1234567890123456789")

    def test_settings_have_every_kind_of_name(self) -> None:
        made = example("MX0304").configure({"AI 1/Upper limit": 2})
        identifier = example("MX0304").parameters["AI 1/Upper limit"].id
        for name in ("AI 1/Upper limit", "0/Upper limit", f"#{identifier}"):
            self.assertEqual(made[name].value, "2 V")
        with self.assertRaises(UnknownName):
            made["Upper limit"]
        with self.assertRaises(WrongType):
            made[7]

    def test_changed_are_those_that_differ_from_the_default(self) -> None:
        made = example("MX0701").decode(READ)
        self.assertEqual(list(made.changed()), ["Baud rate", "Receive timeout"])
        self.assertEqual(example("MX0701").configure().changed(), {})
        self.assertEqual(repr(made), "<Configuration of 5 parameters, 2 changed>")

    def test_has_image_and_bytes_of_its_fieldbus(self) -> None:
        module = example("MX0701")
        raw = module.decode(READ)
        self.assertEqual((raw.fieldbus, raw.image, raw.bytes), ("raw", READ, READ))
        # Options by place in the list: 19200 is the third, even the second.
        registers = bytes.fromhex("0200 0100 0000 0001 eeddef0b82167eeb")
        modbus = module.decode(registers, fieldbus="modbus")
        self.assertEqual((modbus.fieldbus, modbus.image), ("modbus", READ))
        self.assertEqual(modbus.bytes, registers)
        self.assertEqual(dict(modbus), dict(raw))
        configured = module.configure({"Baud rate": "19200"}, fieldbus="modbus")
        self.assertEqual(configured.bytes[:2], registers[:2])

    def test_what_is_composed_is_decoded(self) -> None:
        module = example("MX0990")
        values = {name: one.value for name, one in module.parameters.items() if one.is_accepted}
        for fieldbus in ("raw", "modbus"):
            data = module.compose(values, fieldbus=fieldbus)
            made = module.decode(data, fieldbus=fieldbus)
            self.assertEqual({name: made[name].value for name in values}, values, fieldbus)

    def test_bytes_of_another_size_are_no_configuration(self) -> None:
        for fieldbus in ("raw", "modbus"):
            for size in (0, 1, 11, 13, 17):
                with self.assertRaises(InputError, msg=f"{size} {fieldbus}") as raised:
                    example("MX0701").decode(bytes(size), fieldbus=fieldbus, place="coupler 7")
                self.assertEqual(raised.exception.place, "coupler 7")

    def test_registers_without_a_meaning_are_an_error(self) -> None:
        data = bytes.fromhex("0900 0100 0000 0001 eeddef0b82167eeb")  # four options
        with self.assertRaises(InputError) as raised:
            example("MX0701").decode(data, fieldbus="modbus")
        self.assertIn("Baud rate", str(raised.exception))

    def test_arguments_of_other_types_are_refused(self) -> None:
        module = example("MX0701")
        for wrong in ("05", None, [5], 7):
            with self.assertRaises(WrongType):
                module.decode(wrong)
        with self.assertRaises(WrongType):
            module.decode(READ, place=None)
        with self.assertRaises(RequestError):
            module.decode(READ, fieldbus="RAW")

    def test_bits_of_no_parameter_are_a_note(self) -> None:
        image = bytearray(READ)
        image[1] |= 0x80  # parity has bits 0 and 1, stop bits bit 4
        (note,) = example("MX0701").decode(image).findings
        self.assertEqual(note.severity, "note")
        self.assertEqual(example("MX0701").decode(READ).findings, ())

    def test_is_not_changed_with_the_bytes_that_it_is_made_of(self) -> None:
        image = bytearray(READ)
        made = example("MX0701").decode(image)
        image[0] = 1
        self.assertEqual(made["Baud rate"].value, "19200")

    def test_stays_when_its_module_is_gone(self) -> None:
        made = module_of("parameters: [{name: A, at: 0, type: UInt8, default: 7, range: [0, 9]}]\n")
        configuration = made.configure({"A": 8})
        parameters = made.parameters
        del made
        gc.collect()
        self.assertEqual(configuration["A"].value, "8")
        self.assertEqual(parameters["A"].value, "7")


class Texts(unittest.TestCase):
    def test_json_is_of_its_schema(self) -> None:
        made = example("MX0701").decode(READ)
        read = json.loads(made.json())
        self.assertEqual(read["schema"]["name"], "mxtool.config")
        self.assertEqual(len(read["parameters"]), 5)
        self.assertEqual(len(json.loads(made.json(changed=True))["parameters"]), 2)

    def test_csv_has_each_separator_and_a_mark(self) -> None:
        made = example("MX0701").decode(READ)
        wanted = list(csv.reader(io.StringIO(made.csv())))
        self.assertEqual(len(wanted), 6)
        for separator in (";", "\t"):
            read = list(csv.reader(io.StringIO(made.csv(separator)), delimiter=separator))
            self.assertEqual(read, wanted)
        self.assertEqual(made.csv(byte_order_mark=True), "\ufeff" + made.csv())
        self.assertEqual(len(made.csv(changed=True).splitlines()), 3)

    def test_separators_are_one_of_three(self) -> None:
        made = example("MX0701").configure()
        for wrong in ("|", "", ",;", "\0", "é"):
            with self.assertRaises(RequestError, msg=repr(wrong)) as raised:
                made.csv(wrong)
            self.assertEqual(raised.exception.accepted, (",", ";", "\t"))
        with self.assertRaises(WrongType):
            made.csv(b",")

    def test_the_values_file_has_the_changed_alone(self) -> None:
        made = example("MX0701").decode(READ)
        lines = [line for line in made.values_file(changed=True).splitlines() if line]
        names = [line.split(":")[0] for line in lines if not line.startswith("#")]
        self.assertEqual(names, ["Baud rate", "Receive timeout"])


class Comparisons(unittest.TestCase):
    def test_deviations_are_wanted_and_read(self) -> None:
        module = example("MX0701")
        wanted = module.configure({"Parity": "odd"})
        found = wanted.compare(module.decode(READ))
        self.assertFalse(found.is_same)
        identifiers = [one.id for one in module.parameters.values()]
        wanted_deviations = (
            Deviation(identifiers[0], "Baud rate", None, "9600", "19200"),
            Deviation(identifiers[1], "Parity", None, "odd", "even"),
            Deviation(identifiers[3], "Receive timeout", None, "250 ms", "1 ms"),
        )
        self.assertEqual(found.deviations, wanted_deviations)
        self.assertEqual(repr(found), "<Comparison with 3 deviations>")
        self.assertEqual(json.loads(found.json())["schema"]["name"], "mxtool.config-comparison")
        self.assertIn("3 of 5 parameters deviate", found.text())

    def test_the_same_has_no_deviations(self) -> None:
        found = example("MX0701").decode(READ).compare(example("MX0701").decode(READ))
        self.assertTrue(found.is_same)
        self.assertEqual(found.deviations, ())

    def test_bits_of_no_parameter_are_a_finding(self) -> None:
        module = example("MX0701")
        other = bytearray(module.default_image)
        other[1] |= 0x80  # Parity has bits 0 and 1, Stop bits has bit 4
        found = module.configure().compare(module.decode(other))
        self.assertFalse(found.is_same)
        self.assertEqual(found.deviations, ())
        self.assertEqual([one.severity for one in found.findings], ["warning"])
        self.assertEqual(module.configure().compare(module.configure()).findings, ())

    def test_the_table_is_csv_too(self) -> None:
        module = example("MX0701")
        found = module.configure({"Parity": "odd"}).compare(module.configure())
        heading, row = found.csv(";").splitlines()
        self.assertEqual(len(heading.split(";")), len(row.split(";")))
        self.assertIn(";Parity;", row)
        with self.assertRaises(RequestError):
            found.csv("|")

    def test_other_modules_and_fieldbuses_are_refused(self) -> None:
        wanted = example("MX0701").configure()
        of_modbus = example("MX0701").configure(fieldbus="modbus")
        for other in (example("MX0304").configure(), of_modbus):
            with self.assertRaises(Error):
                wanted.compare(other)

    def test_what_is_compared_is_a_configuration(self) -> None:
        for wrong in (READ, None, {}):
            with self.assertRaises(WrongType):
                example("MX0701").configure().compare(wrong)


if __name__ == "__main__":
    unittest.main()
