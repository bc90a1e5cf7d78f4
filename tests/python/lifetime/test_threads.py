"""Threads that share objects, and the interpreter lock."""

from __future__ import annotations

import shutil
import tempfile
import threading
import time
import unittest
from typing import Callable

from examples import PUMP_HOUSE, example, path_of
from mxmodule import Catalogue, ClosedError, Module, Station, check

THREADS = 8


def in_threads(work: Callable[[int], object]) -> list[BaseException]:
    """Runs `work` in each of the threads, with its number, and returns what was raised."""
    raised: list[BaseException] = []
    barrier = threading.Barrier(THREADS)

    def run(number: int) -> None:
        try:
            barrier.wait()
            work(number)
        except BaseException as failure:
            raised.append(failure)

    threads = [threading.Thread(target=run, args=(number,)) for number in range(THREADS)]
    for one in threads:
        one.start()
    for one in threads:
        one.join()
    return raised


class Sharing(unittest.TestCase):
    def test_one_module(self) -> None:
        module = Module.load(path_of("MX0701"))  # nothing of it is read before
        wanted = example("MX0701").json()

        def work(number: int) -> None:
            for _ in range(10):
                image = module.compose({"Receive timeout": 100 + number})
                assert image[2:4] == (100 + number).to_bytes(2, "big")
                made = module.decode(image)
                assert made["Receive timeout"].digits == str(100 + number)
                assert module.parameters["Parity"].value == "even"
                assert module.json() == wanted
                assert len(module.channels) == 48
                assert module.at(input_offset=number).channels.input.first_byte == number

        self.assertEqual(in_threads(work), [])

    def test_one_station(self) -> None:
        station = Station.load(PUMP_HOUSE)
        plan = station.plan()
        wanted = plan.text()

        def work(_: int) -> None:
            assert station.plan().text() == wanted
            assert plan.text() == wanted

        self.assertEqual(in_threads(work), [])

    def test_one_catalogue(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            for name in ("MX0304", "MX0104", "MX0701"):
                shutil.copy(path_of(name), folder)
            with Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True) as catalogue:

                def work(number: int) -> None:
                    for _ in range(5):
                        if number == 0:
                            catalogue.populate(folder)
                        assert catalogue.module("5a030304").label == example("MX0304").label
                        assert len(catalogue.search("hysteresis")) == 1

                catalogue.populate(folder)
                self.assertEqual(in_threads(work), [])

    def test_each_its_own_objects(self) -> None:
        def work(number: int) -> None:
            for name in ("MX0304", "MX0104", "MX0701", "MX0990"):
                module = Module.load(path_of(name))
                assert module.text() == example(name).text()
                del module

        self.assertEqual(in_threads(work), [])


class Closing(unittest.TestCase):
    def test_a_call_of_another_thread_ends_first(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            for name in ("MX0304", "MX0104", "MX0701"):
                shutil.copy(path_of(name), folder)
            catalogue = Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True)
            inside, closed = threading.Event(), threading.Event()
            made = []

            def progress(done: int, total: int) -> None:
                inside.set()
                closed.wait()

            def populate() -> None:
                made.append(catalogue.populate(folder, progress=progress))

            thread = threading.Thread(target=populate)
            thread.start()
            inside.wait()
            catalogue.close()
            closed.set()
            thread.join()
            self.assertEqual(made[0].inserted, 3)
            self.assertRaises(ClosedError, catalogue.search)
            self.assertEqual(len(Catalogue.open(f"sqlite:{folder}/a.sqlite")), 3)

    def test_while_others_search(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            catalogue = Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True)

            def work(number: int) -> None:
                for count in range(1000):
                    if number == 0 and count == 20:
                        catalogue.close()
                    catalogue.search()

            raised = in_threads(work)
            self.assertEqual([type(one) for one in raised], [ClosedError] * THREADS)


class InterpreterLock(unittest.TestCase):
    def counted_during(self, work: Callable[[], object]) -> int:
        """Returns how often this thread ran while another one called `work`."""
        ended = threading.Event()

        def run() -> None:
            work()
            ended.set()

        thread = threading.Thread(target=run)
        count = 0
        thread.start()
        while not ended.is_set():
            count += 1
            time.sleep(0.001)
        thread.join()
        return count

    def test_is_released_while_the_library_works(self) -> None:
        paths = [path_of("MX0960")] * 60
        while self.milliseconds_of(paths) < 200:
            paths *= 2  # on any machine long enough for this thread to run often
        # A thread that keeps the lock would let this one run once or twice.
        self.assertGreater(self.counted_during(lambda: check(*paths)), 5)

    def milliseconds_of(self, paths: list[str]) -> float:
        start = time.perf_counter()
        check(*paths)
        return (time.perf_counter() - start) * 1000


if __name__ == "__main__":
    unittest.main()
