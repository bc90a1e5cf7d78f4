"""Random arguments for every public function: a result, or an exception that says what is wrong."""

from __future__ import annotations

import inspect
import os
import random
import tempfile
import time
import unittest
import warnings
from decimal import Decimal
from pathlib import Path
from typing import Any, Callable, Iterator

import mxmodule
from examples import PUMP_HOUSE, content_of, example, path_of

# For a longer run with others: RANDOM_SEED=5 RANDOM_SECONDS=600 tests/python/run build/dev ...
SEED = int(os.environ.get("RANDOM_SEED", "20"))
SECONDS = float(os.environ.get("RANDOM_SECONDS", "1"))


# What files, networks and the caller's objects change or wait for.
_NOT_CALLED = {"close", "populate", "connect", "simulate", "apply", "watch", "open"}

# Classes whose objects are made of values of Python.
_MADE_OF_VALUES = (
    *(tuple, str, BaseException),
    *(mxmodule.Rows, mxmodule.Parameter, mxmodule.Parameters),
)

_OPERATORS = {"__getitem__", "__contains__", "__eq__"}


class Strange:
    """Fails in every way in which an object is used."""

    def _fail(self, *_: object) -> Any:
        raise AttributeError("strange")

    __index__ = __fspath__ = __iter__ = __len__ = __float__ = __bool__ = _fail


def _plain(random_: random.Random) -> Iterator[Any]:
    """Gives values of many types, some of which are accepted."""
    yield from (None, True, False, 0, 1, -1, 255, 2**31, 2**32, 2**64, 1 << 5000, 1.5, -0.0)
    yield from (float("nan"), float("inf"), 1e308, Decimal("1e999999"), Decimal("NaN"), 1j)
    yield from ("", "\0", "\ud800", "modbus", ";", "AI 1", "AI 1/Upper limit", "#21", "5a030304")
    yield from ("%s%n", "x" * random_.randrange(100000), "Levels", "LT_101", "global", "'; --")
    yield from (b"", b"\0", content_of("MX0304"), bytearray(33), memoryview(bytes(66))[::2])
    yield from ([], (), {}, {"AI 1/Upper limit": 1}, {"AI 1/Filter": {}}, {1: 2}, ["in_bytes>1"])
    yield from (object(), Strange(), type, len, slice(1, None), slice("a"), Path(path_of("MX0304")))
    yield from (path_of("MX9999"), str(PUMP_HOUSE), os.devnull, "/nonexistent/file", "/")


class RandomArguments(unittest.TestCase):
    def setUp(self) -> None:
        self.random = random.Random(SEED)
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.catalogue = mxmodule.Catalogue.open("sqlite::memory:", create=True)
        self.addCleanup(self.catalogue.close)
        plan = mxmodule.Station.load(PUMP_HOUSE).plan()
        self.simulator = plan.simulate()
        self.addCleanup(self.simulator.close)
        self.coupler = plan.connect(self.simulator.address)
        self.addCleanup(self.coupler.close)
        module = example("MX0304")
        configuration = module.configure()
        self.objects: list[Any] = [
            *(module, module.parameters, module.channels, module.parameters["AI 1/Upper limit"]),
            *(configuration, configuration.compare(module.configure({"AI 1/Upper limit": 1}))),
            *(self.catalogue, mxmodule.check_rules(), module.channels[0], module.svg()),
            *(mxmodule.Station.load(PUMP_HOUSE), plan, plan.channels, plan.compare(plan)),
            *(self.coupler, self.simulator, self.coupler.outputs({"P_101": 1})),
            self.coupler.difference(),
        ]

    def functions(self) -> list[Callable[..., Any]]:
        """Returns the public functions, classes and methods of this package, also for operators."""
        found: list[Callable[..., Any]] = []
        for public in (getattr(mxmodule, name) for name in mxmodule.__all__):
            if not isinstance(public, type):
                found.append(public)
            elif not issubclass(public, _MADE_OF_VALUES):
                found.append(public)
        for one in self.objects:
            found += [_called(one, name) for name in sorted(_own_names(type(one)))]
        return found

    def argument(self, values: list[Any]) -> Any:
        chosen = self.random.choice(values)
        kind = self.random.randrange(8)
        if kind == 0:
            return self.random.choice(self.objects)
        if kind == 1 and not isinstance(chosen, Strange):
            return {self.random.choice(("AI 1/Filter", "P_101", "#21", 5, b"")): chosen}
        return [chosen, self.random.choice(values)] if kind == 2 else chosen

    def keywords(self, members: Any, values: list[Any]) -> dict[str, Any]:
        names = [one.name for one in members.values() if one.kind is one.KEYWORD_ONLY]
        return {one: self.argument(values) for one in names if self.random.random() < 0.3}

    def test_nothing_else_happens(self) -> None:
        functions = self.functions()
        self.assertGreater(len(functions), 150)
        values = list(_plain(self.random))
        end = time.monotonic() + SECONDS
        with warnings.catch_warnings():
            warnings.simplefilter("ignore", mxmodule.SideEffectWarning)
            while time.monotonic() < end:
                self.call_one(self.random.choice(functions), values)
        # All of it still works.
        self.assertIn(self.coupler.read("P_101")["P_101"], (0, 1))
        self.assertEqual(len(self.catalogue), 0)
        self.assertEqual(example("MX0304").compose(), example("MX0304").default_image)

    def call_one(self, function: Callable[..., Any], values: list[Any]) -> None:
        signature = inspect.signature(function)
        arguments = [self.argument(values) for _ in range(self.random.randrange(4))]
        keywords = self.keywords(signature.parameters, values)
        try:
            signature.bind(*arguments, **keywords)
        except TypeError:
            return
        try:
            repr(function(*arguments, **keywords))
        except (mxmodule.Error, IndexError) as failure:
            str(failure)
        except Exception as failure:
            if "strange" not in str(failure):
                raise AssertionError(f"{function}: {arguments}, {keywords}") from failure


def _own_names(kind: type) -> set[str]:
    """Returns the names of the methods and properties of `kind` that this package defines."""
    own = [one for one in kind.__mro__ if one.__module__.startswith("mxmodule")]
    names = {name for one in own for name in vars(one)}
    public = {name for name in names if not name.startswith("_")} - _NOT_CALLED
    return (public | (names & _OPERATORS)) - set(getattr(kind, "_fields", ()))


def _called(one: Any, name: str) -> Callable[..., Any]:
    """Returns the method `name` of `one`, or a function that reads this property."""
    if callable(getattr(type(one), name)):
        method: Callable[..., Any] = getattr(one, name)
        return method
    return lambda: getattr(one, name)


if __name__ == "__main__":
    unittest.main()
