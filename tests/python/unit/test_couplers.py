"""Couplers over Modbus, with a simulated one as the other side."""

from __future__ import annotations

import contextlib
import os
import pickle
import threading
import time
import unittest

from examples import PUMP_HOUSE
from mxmodule import (
    ClosedError,
    Coupler,
    InputError,
    NotDone,
    OutputError,
    RequestError,
    Simulator,
    Station,
    WrongType,
)


def sockets() -> int:
    """Returns the number of sockets that this process has open."""
    count = 0
    for name in os.listdir("/proc/self/fd"):
        with contextlib.suppress(FileNotFoundError):
            count += os.readlink(f"/proc/self/fd/{name}").startswith("socket:")
    return count


class WithCoupler(unittest.TestCase):
    simulator: Simulator
    coupler: Coupler

    def setUp(self) -> None:
        self.station = Station.load(PUMP_HOUSE)
        self.plan = self.station.plan()
        self.simulator = self.plan.simulate()
        self.addCleanup(self.simulator.close)
        self.coupler = self.plan.connect(self.simulator.address)
        self.addCleanup(self.coupler.close)


class Parameters(WithCoupler):
    def test_the_parameters_of_the_station_differ_from_the_defaults(self) -> None:
        difference = self.coupler.difference()
        self.assertFalse(difference.is_same)
        self.assertEqual(
            [(one.module, one.name, one.planned) for one in difference.parameters],
            [
                ("Levels", "Mains suppression", "60 Hz"),
                ("Levels", "AI 1/Signal range", "4-20 mA"),
                ("Levels", "AI 1/Upper limit", "9.9 V"),
                ("Levels", "AI 2/Signal range", "4-20 mA"),
            ],
        )
        # Module 2 begins 0x80 registers after module 1, at 0x4000.
        self.assertEqual(difference.parameters[0].address, 0x4080)
        self.assertEqual(difference.findings, ())
        self.assertTrue(difference.question().endswith("?"))
        self.assertIn("Mains suppression", difference.text("verify"))
        self.assertIn("60 Hz", difference._repr_html_())

    def test_applied_parameters_are_read_back(self) -> None:
        report = self.coupler.apply(self.coupler.difference())
        self.assertTrue(report.is_done)
        self.assertEqual({one.outcome for one in report.parameters}, {"verified"})
        self.assertEqual(report.findings, ())
        self.assertTrue(self.coupler.difference().is_same)
        self.assertGreaterEqual(self.coupler.traffic.registers_written, 4)
        self.assertIn("60 Hz", report.text())
        self.assertIn("<html", report.html())

    def test_what_was_not_agreed_to_is_not_written(self) -> None:
        agreed = self.coupler.difference()
        self.coupler.apply(agreed)
        with self.assertRaises(OutputError) as raised:
            self.coupler.apply(agreed)
        self.assertNotIsInstance(raised.exception, NotDone)
        with self.assertRaises(WrongType):
            self.coupler.apply("yes")  # type: ignore[arg-type]

    def test_the_station_gets_what_the_coupler_has(self) -> None:
        text = self.coupler.read_station()
        self.assertIn("Mains suppression: 50", text)
        plan = Station.from_text(text, str(PUMP_HOUSE)).plan()
        self.assertTrue(plan.connect(self.simulator.address).difference().is_same)


class Values(WithCoupler):
    def test_inputs_are_read_by_name(self) -> None:
        self.simulator.set_input("LT_101", -5)
        self.simulator.set_input("P_101_fault", True)
        read = self.coupler.read("LT_101", "P_101_fault")
        self.assertEqual(read, {"LT_101": -5, "P_101_fault": 1})
        self.assertEqual(len(self.coupler.read("Levels")), 4)
        self.assertEqual(len(self.coupler.read()), len(self.plan.channels))

    def test_watching_tells_what_changed(self) -> None:
        samples = self.coupler.watch("LT_101", "LT_102", interval=0)
        first = next(samples)
        self.assertEqual((first.values, first.changed), ({"LT_101": 0, "LT_102": 0}, ()))
        self.simulator.set_input("LT_102", 7)
        self.assertEqual(next(samples).changed, ("LT_102",))
        self.assertEqual(next(samples).changed, ())

    def test_watching_is_refused_at_once(self) -> None:
        with self.assertRaises(RequestError) as raised:
            self.coupler.watch("LT_10", "LT_101")
        self.assertIn("LT_101", raised.exception.accepted)
        with self.assertRaises(WrongType):
            self.coupler.watch(interval="1")  # type: ignore[arg-type]
        for interval in (-1, float("nan"), float("inf"), 10**400):
            with self.assertRaises(RequestError) as raised:
                self.coupler.watch(interval=interval)
            self.assertEqual(raised.exception.place, "interval")

    def test_outputs_are_set_and_stay(self) -> None:
        report = self.coupler.set({"P_101": True})
        self.assertTrue(report.is_done)
        self.assertEqual([(one.name, one.before, one.now) for one in report], [("P_101", 0, 1)])
        self.assertEqual(self.simulator.value("P_101"), "1")
        self.assertEqual(self.simulator.value("P_102"), "0")

    def test_outputs_are_restored_at_the_end(self) -> None:
        self.coupler.set({"P_102": 1})
        shown = f"<Outputs 'P_101' of {self.coupler!r}>"
        self.assertEqual(repr(self.coupler.outputs({"P_101": 1})), shown)
        with self.coupler.outputs({"P_101": 1, "P_102": 0}) as outputs:
            self.assertEqual([one.now for one in outputs.read()], [None, None])
            outputs.write()
            self.assertEqual(self.simulator.value("P_101"), "1")
        self.assertEqual(self.simulator.value("P_101"), "0")
        self.assertEqual(self.simulator.value("P_102"), "1")

    def test_what_cannot_be_set_is_refused_together(self) -> None:
        with self.assertRaises(RequestError) as raised:
            self.coupler.outputs({"P_103": 1, "LT_101": 1, "P_102": 2})
        self.assertEqual(len(raised.exception.findings), 3)
        self.assertEqual(self.simulator.counts.requests, 0)


class Faults(WithCoupler):
    def test_a_coupler_that_is_gone_is_named(self) -> None:
        self.simulator.close()
        with self.assertRaises(OutputError) as raised:
            self.coupler.read("LT_101")
        self.assertIn(self.coupler.target, raised.exception.place + raised.exception.text)

    def test_a_write_without_an_answer_is_not_done(self) -> None:
        outputs = self.coupler.outputs({"P_101": 1})
        outputs.write()
        self.simulator.close()
        with self.assertRaises(NotDone) as raised:
            outputs.restore()
        self.assertIs(raised.exception.report.is_done, False)
        again = pickle.loads(pickle.dumps(raised.exception))
        self.assertEqual(again.findings, raised.exception.findings)
        self.assertEqual(again.report, raised.exception.report)
        self.assertIs(again.report.is_done, False)

    def test_closed_objects_are_refused(self) -> None:
        samples = self.coupler.watch(interval=0)
        outputs = self.coupler.outputs({"P_101": 1})
        self.coupler.close()
        self.assertTrue(self.coupler.closed)
        for call in (self.coupler.difference, lambda: next(samples), outputs.write):
            with self.assertRaises(ClosedError):
                call()
        self.simulator.close()
        with self.assertRaises(ClosedError):
            self.simulator.set_input("LT_101", 1)

    def test_closing_disconnects_whatever_is_kept(self) -> None:
        before = sockets()
        samples = self.coupler.watch(interval=0)
        outputs = self.coupler.outputs({"P_101": 1})
        next(samples)
        outputs.read()
        self.assertGreater(sockets(), before)
        self.coupler.close()
        deadline = time.monotonic() + 5
        while sockets() > before and time.monotonic() < deadline:
            time.sleep(0.001)  # the other side is closed by the thread of the simulator
        self.assertLessEqual(sockets(), before)  # one of an earlier test may end meanwhile
        del samples, outputs

    def test_that_other_computers_reach_a_simulator_is_a_warning(self) -> None:
        with self.assertWarnsRegex(UserWarning, "other computers"):
            self.plan.simulate("tcp:0.0.0.0:0").close()

    def test_other_targets_are_refused(self) -> None:
        with self.assertRaises(RequestError):
            self.plan.connect("127.0.0.1")
        text = "station: One\nmodules: [../modules/MX0304.yaml]\n"
        without_registers = Station.from_text(text, str(PUMP_HOUSE)).plan()
        with self.assertRaises(InputError) as raised:
            without_registers.connect(self.simulator.address)
        self.assertIn("modbus", str(raised.exception))


class Threads(WithCoupler):
    def test_threads_share_a_coupler(self) -> None:
        read: list[int] = []

        def run() -> None:
            for _ in range(20):
                read.append(len(self.coupler.read("Levels")))

        threads = [threading.Thread(target=run) for _ in range(4)]
        for one in threads:
            one.start()
        for one in threads:
            one.join()
        self.assertEqual(read, [4] * 80)


if __name__ == "__main__":
    unittest.main()
