"""What `mxtool config` and `mxtool channels` print of every example, obtained through Python."""

from __future__ import annotations

import subprocess
import unittest
import warnings
from concurrent.futures import ThreadPoolExecutor
from typing import Callable

from examples import MXTOOL, path_of, readable_paths
from mxmodule import Configuration, InputError, Module, Parameter, SideEffectWarning

SEPARATORS = {"comma": ",", "semicolon": ";", "tab": "\t"}

#: The arguments of a call of mxtool, and what should give the same.
Pair = tuple[list[str], Callable[[], str]]


def another_value(one: Parameter) -> str:
    """Returns a value that is mostly not the default, as a call states it."""
    if one.has_options:
        return one.options[-1].call_text
    return one.minimum if one.minimum != one.digits else one.maximum


def other_values(module: Module, number: int) -> dict[str, str]:
    """Returns such values for a third of the parameters, for every `number` another third."""
    listed = list(module.parameters.items())[number % 3 :: 3]
    return {name: another_value(one) for name, one in listed if one.options or not one.has_options}


def listings(made: Configuration, changed: bool, separator: str) -> list[Pair]:
    """Returns the outputs of `made` in each form, with the options of the form."""
    of = {"changed": changed}
    csv = ["csv", "--separator", separator, *(["--bom"] if changed else [])]
    return [
        (["text"], lambda: made.text(**of)),
        (["json"], lambda: made.json(**of)),
        (["values"], lambda: made.values_file(**of)),
        (csv, lambda: made.csv(SEPARATORS[separator], byte_order_mark=changed, **of)),
    ]


def configurations(module: Module, number: int) -> list[Pair]:
    """Returns the outputs of `config`: all on each fieldbus, and the changed ones."""
    separator = list(SEPARATORS)[number % 3]
    pairs: list[Pair] = []
    for fieldbus in ("raw", "modbus"):
        for form, give in listings(module.configure(fieldbus=fieldbus), False, separator):
            pairs.append((["config", "--fieldbus", fieldbus, "--format", *form], give))
    values = other_values(module, number)
    words = ["config", "--changed"]
    for name, value in values.items():
        words += ["--set", f"{name}={value}"]
    for form, give in listings(module.configure(values), True, separator):
        pairs.append(([*words, "--format", *form], give))
    return pairs


def channels(module: Module, number: int) -> list[Pair]:
    """Returns the outputs of `channels`."""
    listed = module.channels
    separator = list(SEPARATORS)[(number + 1) % 3]
    mark = number % 2 == 0
    csv = ["--format", "csv", "--separator", separator, *(["--bom"] if mark else [])]
    return [
        (["channels", "--map"], lambda: listed.drawing() + "\n" + listed.text()),
        (["channels", "--format", "json"], listed.json),
        (["channels", *csv], lambda: listed.csv(SEPARATORS[separator], byte_order_mark=mark)),
        (["channels", "--format", "st"], listed.declarations),
        (["channels", "--picture", "-"], listed.svg),
    ]


def printed(arguments: list[str]) -> str:
    """Returns what mxtool prints."""
    ended = subprocess.run([MXTOOL, *arguments], capture_output=True, check=True)
    return ended.stdout.decode("utf-8")


class Examples(unittest.TestCase):
    def test_mxtool_prints_the_same(self) -> None:
        calls: list[list[str]] = []
        given: list[Callable[[], str]] = []
        changed = 0
        for number, path in enumerate(readable_paths()):
            module = Module.load(path)
            changed += len(module.configure(other_values(module, number)).changed())
            for arguments, give in configurations(module, number) + channels(module, number):
                calls.append([*arguments, path])
                given.append(give)
        self.assertGreater(len(calls), 500)
        self.assertGreater(changed, 100)
        with ThreadPoolExecutor(2) as pool:
            for arguments, give, output in zip(calls, given, pool.map(printed, calls)):
                self.assertEqual(give(), output, " ".join(arguments))

    def test_an_image_without_modbus_form_fails_with_the_same_text(self) -> None:
        words = ["config", "--force", "--set", "Baud rate=9", "--fieldbus", "modbus"]
        call = [MXTOOL, *words, path_of("MX0701")]
        ended = subprocess.run(call, capture_output=True, text=True, check=False)
        module = Module.load(path_of("MX0701"))
        with warnings.catch_warnings(), self.assertRaises(InputError) as raised:
            warnings.simplefilter("ignore", SideEffectWarning)
            module.registers({"Baud rate": 9}, force=True)
        self.assertIn(f"error: {raised.exception.text}", ended.stderr)
        self.assertNotEqual(ended.returncode, 0)


if __name__ == "__main__":
    unittest.main()
