"""Stations and their plans."""

from __future__ import annotations

import gc
import json
import subprocess
import tempfile
import unittest

from examples import FOLDER, MXTOOL, PUMP_HOUSE
from mxmodule import (
    Catalogue,
    InputError,
    Plan,
    RequestError,
    Station,
    UnknownName,
    WrongType,
)

STATIONS = PUMP_HOUSE.parent


def plan_of(name: str) -> Plan:
    """Returns the plan of the example station `name`."""
    return Station.load(STATIONS / f"{name}.yaml").plan()


def mxtool(*arguments: str) -> bytes:
    """Returns what mxtool prints."""
    return subprocess.run([MXTOOL, *arguments], check=True, stdout=subprocess.PIPE).stdout


class Reading(unittest.TestCase):
    def test_a_station_has_its_name_and_its_text(self) -> None:
        station = Station.load(PUMP_HOUSE)
        self.assertEqual(station.name, "Pump house")
        self.assertEqual(station.source, PUMP_HOUSE.read_text(encoding="utf-8"))
        self.assertEqual(station.findings, ())
        self.assertEqual(repr(station), f"<Station 'Pump house' of {PUMP_HOUSE}>")

    def test_a_text_is_read_in_the_folder_of_its_name(self) -> None:
        text = "station: One\nmodules: [../modules/MX0304.yaml]\n"
        plan = Station.from_text(text, str(STATIONS / "one.yaml")).plan()
        self.assertEqual([one.module_id for one in plan.modules], ["5a030304"])

    def test_all_that_is_wrong_is_told_with_its_place(self) -> None:
        text = "station: Wrong\nmodules:\n  - nothing.bin\n  - {modul: 5a030304}\n"
        station = Station.from_text(text, "wrong.yaml")
        with self.assertRaises(InputError) as raised:
            station.plan()
        places = [one.place for one in raised.exception.findings]
        self.assertEqual(places[:2], ["wrong.yaml:3:5", "wrong.yaml:4:6"])
        self.assertIn("modul", raised.exception.findings[1].text)
        self.assertEqual([one.place for one in station.check()][:2], places[:2])

    def test_what_is_no_station_is_refused(self) -> None:
        with self.assertRaises(InputError):
            Station.load(STATIONS / "nothing.yaml")
        with self.assertRaises(InputError):
            Station.load(STATIONS.parent / "modules" / "MX0304.yaml")
        with self.assertRaises(WrongType):
            Station.load(3)  # type: ignore[arg-type]
        with self.assertRaises(WrongType):
            Station.from_text(b"station: One\n")  # type: ignore[arg-type]

    def test_modules_come_from_a_catalogue(self) -> None:
        text = "station: One\nmodules: [5a030304]\n"
        with tempfile.TemporaryDirectory() as folder:
            url = f"sqlite:{folder}/modules.sqlite"
            with self.assertRaises(InputError):
                Station.from_text(text, catalogue=url).plan()
            with Catalogue.open(url, create=True) as catalogue:
                catalogue.populate(FOLDER)
            plan = Station.from_text(text, catalogue=url).plan()
        self.assertEqual([one.label for one in plan.modules], ["4 AI ±10 V / 0-20 mA"])


class Planning(unittest.TestCase):
    def test_modules_have_the_places_that_the_station_gives(self) -> None:
        modules = plan_of("pump-house").modules
        self.assertEqual([one.name for one in modules], ["MX0116", "Levels", "Pumps"])
        self.assertEqual([one.position for one in modules], [1, 2, 3])
        # 2 bytes, 8 bytes, 4 reserved bytes, then pinned at byte 32.
        self.assertEqual([one.input for one in modules], [(0, 2), (2, 8), (32, 1)])
        self.assertEqual(modules[2].output, (0, 1))
        self.assertEqual([one.parameter_bytes for one in modules], [3, 33, 2])

    def test_images_contain_modules_and_gaps(self) -> None:
        plan = plan_of("pump-house")
        self.assertEqual((plan.input, plan.output), ((0, 33), (0, 1)))
        reserved = plan.gaps[0]
        self.assertEqual((reserved.reason, reserved.name), ("reserved", "flow meter"))
        self.assertEqual((reserved.image, reserved.offset, reserved.size), ("in", 10, 4))

    def test_channels_have_names_of_the_station(self) -> None:
        channels = {one.alias: one for one in plan_of("pump-house").channels if one.alias}
        level = channels["LT_102"]
        self.assertEqual((level.module_name, level.name, level.symbol), ("Levels", "AI 2", "IW4"))
        self.assertEqual(level.comment, "level of tank 2")
        self.assertEqual(channels["P_102"].symbol, "QX0_1")
        self.assertEqual(channels["P_101_fault"].byte, 32)

    def test_values_of_the_station_are_in_the_images(self) -> None:
        plan = plan_of("pump-house")
        # 60 Hz; 4-20 mA is option 3; 9.9 V in millivolts; the lower limit stays at -9.5 V.
        self.assertEqual(plan.image("Levels")[:6].hex(), "3c0326acdae4")
        self.assertEqual(plan.image(2), plan.image("Levels"))
        self.assertEqual(plan.registers("Levels")[:4], [0x3C00, 0x0300, 9900, 0x10000 - 9500])

    def test_a_module_is_at_its_place(self) -> None:
        module = plan_of("pump-house").module("Levels")
        gc.collect()
        self.assertEqual([one.symbol for one in module.channels], ["IW2", "IW4", "IW6", "IW8"])

    def test_another_module_is_refused_with_those_that_there_are(self) -> None:
        plan = plan_of("pump-house")
        for which in ("Level", 0, 4, -1):
            with self.subTest(which=which), self.assertRaises(UnknownName) as raised:
                plan.module(which)
            self.assertEqual(raised.exception.accepted, ("MX0116", "Levels", "Pumps"))
        for wrong in (None, True, 1.0):
            with self.subTest(wrong=wrong), self.assertRaises(WrongType):
                plan.image(wrong)  # type: ignore[arg-type]

    def test_addresses_can_be_pinned(self) -> None:
        station = Station.load(PUMP_HOUSE)
        pinned = Station.from_text(station.pinned(), str(PUMP_HOUSE))
        self.assertIn("in: 2", pinned.source)
        self.assertEqual(pinned.pinned(), pinned.source)
        self.assertTrue(station.plan().compare(pinned.plan()).is_same)


class Exports(unittest.TestCase):
    def test_what_mxtool_prints_is_what_the_plan_gives(self) -> None:
        path = str(STATIONS / "pump-house.yaml")
        plan = Station.load(path).plan()
        for arguments, made in [
            (["show"], plan.text()),
            (["show", "--format", "json"], plan.json()),
            (["channels"], plan.channels.text()),
            (["channels", "--format", "json"], plan.channels.json()),
            (["channels", "--format", "csv", "--separator", ";"], plan.channels.csv(";")),
            (["channels", "--format", "st"], plan.structured_text()),
            (["channels", "--format", "plcopen"], plan.plcopen()),
            (["channels", "--format", "c"], plan.c_header()),
            (["channels", "--picture", "-"], plan.svg()),
            (["config"], plan.parameters_text()),
            (["config", "--fieldbus", "modbus"], plan.parameters_text("modbus")),
            (["config", "--format", "json"], plan.parameters_json()),
        ]:
            with self.subTest(arguments=arguments):
                printed = mxtool("station", *arguments[:1], path, *arguments[1:])
                self.assertEqual(printed.decode("utf-8"), made)

    def test_declarations_count_as_asked(self) -> None:
        plan = plan_of("pump-house")
        self.assertIn("LT_102 AT %IW4 ", plan.structured_text())
        self.assertIn("LT_102 AT %IW2 ", plan.structured_text(address="index"))
        self.assertIn("PROGRAM Pump_house", plan.structured_text(scope="program"))
        self.assertEqual(plan.structured_text().findings, ())
        with self.assertRaises(RequestError) as raised:
            plan.plcopen(address="bit")
        self.assertEqual(raised.exception.accepted, ("byte", "index", "separate"))

    def test_a_variable_without_an_address_is_told(self) -> None:
        # ID6 is no multiple of 4 bytes: counted in units of its size it has no number.
        findings = plan_of("aligned").structured_text(address="index").findings
        self.assertEqual({one.severity for one in findings}, {"warning"})

    def test_parameter_files_are_what_a_master_writes(self) -> None:
        plan = plan_of("pump-house")
        files = plan.parameter_files("modbus")
        names = ["1-MX0116.bin", "2-Levels.bin", "3-Pumps.bin", "station.json"]
        self.assertEqual(list(files), names)
        registers = b"".join(one.to_bytes(2, "big") for one in plan.registers(2))
        self.assertEqual(files["2-Levels.bin"], registers)
        self.assertEqual(plan.parameter_files()["2-Levels.bin"], plan.image(2))
        self.assertEqual(json.loads(files["station.json"])["fieldbus"], "modbus")

    def test_tables_show_modules_and_channels(self) -> None:
        plan = plan_of("pump-house")
        self.assertIn("<td>Levels</td>", plan._repr_html_())
        self.assertIn("<th>input offset</th>", plan._repr_html_())
        self.assertEqual(list(plan.modules.to_dataframe()["input_offset"]), [0, 2, 32])
        self.assertEqual(list(plan.to_dataframe()["name"]), ["MX0116", "Levels", "Pumps"])
        self.assertIn("<td>LT_101</td>", plan.channels._repr_html_())
        self.assertTrue(plan._repr_svg_().startswith("<svg"))
        self.assertIn("<html", plan.datasheet())
        frame = plan.channels.to_dataframe()
        self.assertEqual(list(frame[frame["alias"] == "P_101"]["byte"]), [0])


class Comparing(unittest.TestCase):
    def test_a_moved_module_changes_the_values_of_a_program(self) -> None:
        station = Station.load(PUMP_HOUSE)
        moved = station.source.replace("modules:", "modules:\n  - ../modules/MX0108.yaml", 1)
        other = Station.from_text(moved, str(PUMP_HOUSE)).plan()
        comparison = station.plan().compare(other)
        self.assertFalse(comparison.is_same)
        self.assertFalse(comparison.same_values)
        self.assertTrue(comparison.reasons)
        moves = [one for one in comparison.changes if one.kind == "module moved"]
        self.assertEqual([one.module for one in moves], ["MX0116", "Levels"])

    def test_another_value_moves_nothing(self) -> None:
        station = Station.load(PUMP_HOUSE)
        other = Station.from_text(station.source.replace("60 Hz", "50 Hz"), str(PUMP_HOUSE)).plan()
        comparison = station.plan().compare(other)
        self.assertTrue(comparison.same_values)
        (change,) = comparison.changes
        self.assertEqual((change.kind, change.module), ("parameter", "Levels"))
        self.assertEqual((change.a, change.b), ("60 Hz", "50 Hz"))
        self.assertIn("Mains suppression", comparison.text())
        with self.assertRaises(WrongType):
            station.plan().compare(station)  # type: ignore[arg-type]


if __name__ == "__main__":
    unittest.main()
