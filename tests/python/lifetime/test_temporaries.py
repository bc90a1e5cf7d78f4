"""Objects whose parents are gone or closed, and the handles that stay."""

from __future__ import annotations

import copy
import ctypes
import gc
import importlib
import tempfile
import unittest
import weakref
from typing import Any

import mxmodule
from examples import PUMP_HOUSE, content_of, example, path_of, text_form
from mxmodule import Catalogue, ClosedError, InputError, Module, RequestError, Station

_SIZES = ctypes.POINTER(ctypes.c_size_t)


class Counted:
    """A function of a library that creates or frees handles, and the number of those that live."""

    live = 0

    def __init__(self, function: Any, change: int) -> None:
        self._function = function
        self._change = change

    def __getattr__(self, name: str) -> Any:
        return getattr(self._function, name)

    def __call__(self, *arguments: Any) -> Any:
        result = self._function(*arguments)
        if self._change < 0 or result:
            Counted.live += self._change
        return result


def count_handles() -> None:
    """Counts the handles of all libraries from now on."""
    base = importlib.import_module("mxmodule._library")
    for library in ("_mxmodule", "_mxstation", "_mxonline"):
        module = importlib.import_module(f"mxmodule.{library}")
        for name, (result, _) in module._FAILING.items():
            if result is base.HANDLE:
                setattr(module.library, name, Counted(getattr(module.library, name), 1))
        for name in module._PLAIN:
            if name.endswith("_free"):
                setattr(module.library, name, Counted(getattr(module.library, name), -1))
    setattr(base, "_bytes_free", Counted(getattr(base, "_bytes_free"), -1))


class Temporaries(unittest.TestCase):
    def test_parameters_of_a_temporary(self) -> None:
        path = path_of("MX0304")
        names = [one.name_bytes for one in Module.load(path).parameters.values()]
        self.assertEqual(names[:2], [b"Mains suppression", b"Signal range"])
        for one in Module.load(path).parameters.values():
            gc.collect()
            self.assertTrue(one.unit_bytes is not None and one.options is not None)
            break

    def test_channels_of_a_temporary(self) -> None:
        path = path_of("MX0304")
        texts = [Module.load(path).channels.csv(), Module.load(path).svg()]
        gc.collect()
        self.assertIn("AI 4", texts[0])
        self.assertIn("<svg", texts[1])

    def test_settings_of_a_temporary(self) -> None:
        made = Module.load(path_of("MX0701")).configure({"Parity": "odd"}).changed()
        self.assertEqual(made["Parity"].value, "odd")
        settings = Module.load(path_of("MX0701")).configure({"Parity": "odd"}).items()
        gc.collect()
        self.assertEqual(dict(settings)["Parity"].value, "odd")

    def test_modules_of_a_temporary_station(self) -> None:
        plan = Station.load(PUMP_HOUSE).plan()
        gc.collect()
        self.assertGreater(len(plan.modules), 0)
        self.assertTrue(Station.load(PUMP_HOUSE).plan().text())

    def test_a_bound_method_keeps_its_object(self) -> None:
        compose = Module.load(path_of("MX0701")).compose
        gc.collect()
        self.assertEqual(compose({"Parity": "odd"})[1], 2)

    def test_finalisers_of_a_cycle_use_objects_or_find_them_freed(self) -> None:
        image = example("MX0701").default_image

        class Cycle:
            found: list[object] = []

            def __init__(self) -> None:
                self.cycle = self
                self.module = Module.load(path_of("MX0701"))
                self.configuration = self.module.configure()

            def __del__(self) -> None:
                for use in (self.module.compose, lambda: self.configuration.image):
                    try:
                        self.found.append(use())
                    except ClosedError as refused:
                        self.found.append(refused)

        for _ in range(20):
            Cycle()
        gc.collect()
        self.assertEqual(len(Cycle.found), 40)
        others = [one for one in Cycle.found if not isinstance(one, ClosedError)]
        self.assertLessEqual(set(others), {image})

    def test_no_function_that_asks_a_handle_needs_one(self) -> None:
        asked = 0
        for library in ("_mxmodule", "_mxstation", "_mxonline"):
            module = importlib.import_module(f"mxmodule.{library}")
            for name, (_, arguments) in module._PLAIN.items():
                if arguments and arguments[0] is ctypes.c_void_p:
                    others = [ctypes.c_size_t() if one is _SIZES else 0 for one in arguments[1:]]
                    getattr(module.library, name)(None, *others)
                    asked += 1
        self.assertGreater(asked, 20)

    def test_a_comparison_of_temporaries(self) -> None:
        module = Module.load(path_of("MX0701"))
        found = module.configure({"Parity": "odd"}).compare(module.decode(module.compose()))
        del module
        gc.collect()
        self.assertEqual([one.name for one in found.deviations], ["Parity"])


class Children(unittest.TestCase):
    def test_children_outlive_their_module_in_every_order(self) -> None:
        for keep in range(5):
            module = Module.load(path_of("MX0304"))
            moved = module.at(input_offset=4)
            made = module.configure()
            children: list[Any] = [module, moved, made, module.parameters, module.channels]
            kept = children[keep]
            gone = weakref.ref(module)
            del module, moved, made, children
            gc.collect()
            self.assertEqual(gone() is None, keep != 0)
            self.assertTrue(kept._repr_html_())
            self.assertTrue(copy.deepcopy(kept)._repr_html_())

    def test_a_module_outlives_its_catalogue(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            with open(f"{folder}/MX1.bin", "wb") as file:
                file.write(content_of("MX0304"))
            with Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True) as catalogue:
                catalogue.populate(folder)
                module = catalogue.module("5a030304")
                found = catalogue.search()
            del catalogue
            gc.collect()
            self.assertEqual(module.compose(), example("MX0304").compose())
            self.assertEqual(found[0].module_id, "5a030304")

    def test_a_generator_ends_when_its_catalogue_is_closed(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            catalogue = Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True)
            entries = iter(catalogue)
            catalogue.close()
            self.assertEqual(list(entries), [])
            with self.assertRaises(ClosedError):
                iter(catalogue)

    def test_a_catalogue_may_be_dropped_unclosed(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            for _ in range(20):
                self.assertEqual(len(Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True)), 0)

    def test_a_call_within_a_call_is_refused(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            with open(f"{folder}/MX1.bin", "wb") as file:
                file.write(content_of("MX0304"))
            with Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True) as catalogue:
                with self.assertRaises(RequestError):
                    catalogue.populate(folder, progress=lambda done, total: len(catalogue))
                self.assertEqual(len(catalogue), 0)
                catalogue.populate(folder, progress=lambda done, total: catalogue.close())
                self.assertTrue(catalogue.closed)
            self.assertEqual(len(Catalogue.open(f"sqlite:{folder}/a.sqlite")), 1)


class Handles(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        example("MX0304")
        count_handles()

    def use_everything(self, folder: str) -> None:
        module = Module.load(path_of("MX0701"))
        made = module.configure({"Parity": "odd"})
        made.compare(module.decode(made.image)).text()
        module.registers()
        module.at(input_offset=3).channels.svg()
        made.changed()
        with self.assertRaises(RequestError):
            module.compose({"Party": 1})
        with self.assertRaises(InputError):
            Module.from_bytes(text_form("parameters: 7\n"))
        mxmodule.channels_dataframe([module])
        plan = Station.load(PUMP_HOUSE).plan()
        plan.text()
        list(plan.modules)
        mxmodule.check(path_of("MX0304"))
        with open(f"{folder}/MX1.bin", "wb") as file:
            file.write(content_of("MX0304"))
        with Catalogue.open(f"sqlite:{folder}/a.sqlite", create=True) as catalogue:
            catalogue.populate(folder)
            with self.assertRaises(RequestError):
                catalogue.find("5a000000")
            len(catalogue)

    def test_nothing_stays(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            gc.collect()
            before = Counted.live
            self.use_everything(folder)
            gc.collect()
            self.assertEqual(Counted.live, before)
            kept = Module.load(path_of("MX0304"))
            self.assertEqual(Counted.live, before + 1)
            del kept
            self.assertEqual(Counted.live, before)


if __name__ == "__main__":
    unittest.main()
