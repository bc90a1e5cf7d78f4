"""What holds for objects of every kind."""

from __future__ import annotations

import unittest

import mxmodule
from examples import content_of, example
from mxmodule import Module, WrongType


class Making(unittest.TestCase):
    def test_objects_of_the_library_are_made_by_the_library_alone(self) -> None:
        # As a pointer, each of these would end the process.
        others: tuple[object, ...] = ("MX0304.bin", b"abc", 0x5A030304, None)
        one = mxmodule.Module, mxmodule.Catalogue, mxmodule.Coupler, mxmodule.Simulator
        more = mxmodule.Plan, mxmodule.Comparison, mxmodule.StationComparison
        reports = mxmodule.CouplerDifference, mxmodule.ApplyReport, mxmodule.StationChannels
        for kind in (*one, *more, *reports):
            for other in others:
                with self.subTest(kind=kind.__name__, other=other):
                    with self.assertRaises(WrongType) as raised:
                        kind(other)  # type: ignore
                    self.assertIn("Module.load", raised.exception.hint)

    def test_so_are_those_of_several_arguments(self) -> None:
        with self.assertRaises(WrongType):
            mxmodule.Station("station.yaml", "station.yaml")  # type: ignore
        with self.assertRaises(WrongType):
            mxmodule.Configuration(None, 5, 0)  # type: ignore
        with self.assertRaises(WrongType):
            mxmodule.Outputs(None, 5)  # type: ignore


class Comparing(unittest.TestCase):
    def test_parameters_of_the_same_module_are_equal(self) -> None:
        again = Module.from_bytes(content_of("MX0304")).parameters
        parameters = example("MX0304").parameters
        self.assertIs(example("MX0304").parameters, parameters)
        self.assertEqual(parameters, again)
        self.assertEqual(len({*parameters.values(), *again.values()}), len(parameters))
        self.assertNotEqual(parameters["AI 1/Upper limit"], parameters["AI 2/Upper limit"])
        self.assertNotEqual(parameters["AI 1/Upper limit"], "9.5 V")

    def test_configurations_are_equal_by_image_and_type(self) -> None:
        module = example("MX0701")
        odd = module.configure({"Parity": "odd"})
        self.assertEqual(odd, module.decode(odd.image))
        self.assertEqual(len({odd, module.decode(odd.image)}), 1)
        self.assertNotEqual(odd, module.configure())
        # Both images are empty.
        self.assertNotEqual(example("MX0001").configure(), example("MX0003").configure())
        # Byte 1 bit 7 is of no parameter: all settings are the same.
        image = bytearray(odd.image)
        image[1] ^= 0x80
        self.assertNotEqual(odd, module.decode(image))
        self.assertEqual(odd, dict(module.decode(image)))


class Documents(unittest.TestCase):
    def test_completion_has_what_is_public(self) -> None:
        names = {one for one in dir(mxmodule) if not one.startswith("_")}
        self.assertEqual(names, set(mxmodule.__all__))

    def test_help_describes_every_member_of_a_row(self) -> None:
        kinds = [getattr(mxmodule, name) for name in mxmodule.__all__]
        rows = [one for one in kinds if isinstance(one, type) and issubclass(one, tuple)]
        self.assertIn(mxmodule.Channel, rows)
        for kind in rows:
            for member in kind._fields:
                self.assertIn(f"- `{member}`: ", str(kind.__doc__), kind.__name__)


if __name__ == "__main__":
    unittest.main()
