"""Forked processes."""

from __future__ import annotations

import gc
import multiprocessing
import os
import shutil
import tempfile
import threading
import unittest

from children import exit_code_of_child
from examples import PUMP_HOUSE, SANITIZED, example, path_of
from mxmodule import Catalogue, ClosedError, Module, Station


def use_modules(module: Module) -> None:
    """Uses a module of the parent, and loads others."""
    assert module.compose({"Parity": "odd"})[1] == 2
    assert module.parameters["Parity"].value == "even"
    assert Module.load(path_of("MX0304")).text() == example("MX0304").text()
    assert Station.load(PUMP_HOUSE).plan().text()
    gc.collect()


def label_of(path: str) -> str:
    return Module.load(path).label


class Forks(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        for name in ("MX0304", "MX0701"):
            shutil.copy(path_of(name), self.folder)

    def catalogue_works(self, url: str) -> None:
        catalogue = Catalogue.open(url, create=True)
        catalogue.populate(self.folder)

        def use_in_child() -> None:
            for use in (lambda: len(catalogue), lambda: catalogue.module("5a030304")):
                try:
                    use()
                    raise AssertionError("the catalogue of the parent was used")
                except ClosedError as refused:
                    assert "open it again" in refused.hint
            with Catalogue.open(url) as own:
                assert own.module("5a030304").label == example("MX0304").label
            catalogue.close()
            gc.collect()

        self.assertEqual(exit_code_of_child(use_in_child), 0)
        # The connection of the parent lives on, whatever the child did at its end.
        self.assertEqual(len(catalogue), 2)
        self.assertEqual(exit_code_of_child(lambda: None), 0)
        self.assertEqual(catalogue.find("5a030304").label, example("MX0304").label)
        catalogue.remove("5a030304")
        catalogue.populate(self.folder)
        self.assertEqual(len(catalogue), 2)
        catalogue.close()

    def test_child_uses_modules(self) -> None:
        module = Module.load(path_of("MX0701"))
        self.assertEqual(exit_code_of_child(lambda: use_modules(module)), 0)
        use_modules(module)

    def test_child_opens_its_own_sqlite(self) -> None:
        self.catalogue_works(f"sqlite:{self.folder}/a.sqlite")

    @unittest.skipUnless("TEST_POSTGRESQL" in os.environ, "tests/devicedb/with-postgresql has one")
    def test_child_opens_its_own_postgresql(self) -> None:
        self.catalogue_works(f"postgresql:{os.environ['TEST_POSTGRESQL']}")

    # In the child its allocator stays locked if another thread allocates; the C library's does not.
    @unittest.skipIf(SANITIZED, "AddressSanitizer hangs after a fork while others allocate")
    def test_child_works_while_other_threads_translated(self) -> None:
        module = Module.load(path_of("MX0701"))
        end = threading.Event()

        def translate() -> None:
            while not end.is_set():
                Module.load(path_of("MX0990")).compose()

        def load_in_child() -> None:
            assert module.compose({"Parity": "odd"})[1] == 2
            assert Module.load(path_of("MX0304")).label == label

        label = example("MX0304").label
        threads = [threading.Thread(target=translate) for _ in range(2)]
        for one in threads:
            one.start()
        try:
            codes = [exit_code_of_child(load_in_child) for _ in range(8)]
        finally:
            end.set()
            for one in threads:
                one.join()
        self.assertEqual(codes, [0] * 8)

    def test_child_refuses_a_catalogue_in_use(self) -> None:
        catalogue = Catalogue.open(f"sqlite:{self.folder}/a.sqlite", create=True)
        inside, forked = threading.Event(), threading.Event()

        def progress(done: int, total: int) -> None:
            inside.set()
            forked.wait()

        thread = threading.Thread(target=lambda: catalogue.populate(self.folder, progress=progress))
        thread.start()
        inside.wait()

        def use_in_child() -> None:
            try:
                len(catalogue)
            except ClosedError:
                return
            raise AssertionError("the catalogue of the parent was used")

        code = exit_code_of_child(use_in_child)
        forked.set()
        thread.join()
        self.assertEqual(code, 0)
        self.assertEqual(len(catalogue), 2)

    def test_pool_of_processes(self) -> None:
        with multiprocessing.get_context("fork").Pool(2) as pool:
            labels = pool.map(label_of, [path_of("MX0304"), path_of("MX0701")] * 4)
        self.assertEqual(labels, [example("MX0304").label, example("MX0701").label] * 4)


if __name__ == "__main__":
    unittest.main()
