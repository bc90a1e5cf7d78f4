"""What holds for objects of every kind."""

from __future__ import annotations

import unittest

import mxmodule
from mxmodule import WrongType


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


if __name__ == "__main__":
    unittest.main()
