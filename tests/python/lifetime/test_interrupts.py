"""Ctrl-C during long operations."""

from __future__ import annotations

import os
import shutil
import signal
import tempfile
import threading
import unittest

from examples import path_of
from mxmodule import Catalogue


class Interrupts(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for number in range(300):
            shutil.copy(path_of("MX0304"), f"{self.folder}/MX{number:04}.bin")
        self.catalogue = Catalogue.open(f"sqlite:{self.folder}/a.sqlite", create=True)
        self.addCleanup(self.catalogue.close)

    def interrupt_soon(self) -> threading.Thread:
        """Sends the signal of Ctrl-C while the library works."""

        def interrupt() -> None:
            os.kill(os.getpid(), signal.SIGINT)

        timer = threading.Timer(0.01, interrupt)
        timer.start()
        self.addCleanup(timer.join)
        return timer

    def test_ends_the_work_without_a_change(self) -> None:
        for progress in (None, lambda done, total: None):
            self.interrupt_soon()
            with self.assertRaises(KeyboardInterrupt):
                self.catalogue.populate(self.folder, progress=progress)
            self.assertEqual(len(self.catalogue), 0)
            self.assertIs(signal.getsignal(signal.SIGINT), signal.default_int_handler)

    def test_another_handler_decides(self) -> None:
        called: list[int] = []

        def note(number: int, _: object) -> None:
            called.append(number)

        def end(number: int, _: object) -> None:
            raise SystemExit(number)

        self.addCleanup(signal.signal, signal.SIGINT, signal.getsignal(signal.SIGINT))
        signal.signal(signal.SIGINT, note)
        self.interrupt_soon()
        self.assertEqual(self.catalogue.populate(self.folder).inserted, 1)
        self.assertEqual(called, [signal.SIGINT])
        signal.signal(signal.SIGINT, end)
        self.interrupt_soon()
        with self.assertRaises(SystemExit):
            self.catalogue.populate(self.folder)
        self.assertIs(signal.getsignal(signal.SIGINT), end)

    def test_does_not_end_the_work_of_other_threads(self) -> None:
        made = []
        inside, interrupted = threading.Event(), threading.Event()

        def progress(done: int, total: int) -> None:
            inside.set()
            interrupted.wait()

        def populate() -> None:
            made.append(self.catalogue.populate(self.folder, progress=progress))

        thread = threading.Thread(target=populate)
        thread.start()
        inside.wait()
        with self.assertRaises(KeyboardInterrupt):
            signal.raise_signal(signal.SIGINT)
        interrupted.set()
        thread.join()
        self.assertEqual(made[0].inserted, 1)


if __name__ == "__main__":
    unittest.main()
