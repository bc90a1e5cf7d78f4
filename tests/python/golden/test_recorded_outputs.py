"""The recorded outputs of `mxtool config` and `mxtool channels`, obtained through Python."""

from __future__ import annotations

import argparse
import os
import unittest
import warnings

from examples import BUILD, PROJECT
from mxmodule import Channels, Configuration, Module, SideEffectWarning

GOLDEN = PROJECT / "tests" / "golden"


def options() -> argparse.ArgumentParser:
    """Returns a parser of the options that recorded calls have; another one is an error."""
    parser = argparse.ArgumentParser(exit_on_error=False)
    parser.add_argument("verb")
    parser.add_argument("file")
    parser.add_argument("--format", default="text")
    parser.add_argument("--fieldbus", default="raw")
    parser.add_argument("--set", action="append", default=[])
    parser.add_argument("--decode")
    parser.add_argument("--compare")
    parser.add_argument("--changed", action="store_true")
    parser.add_argument("--picture")
    parser.add_argument("--map", action="store_true")
    parser.add_argument("--in-offset", type=int, default=0)
    parser.add_argument("--out-offset", type=int, default=0)
    return parser


def config_output(call: argparse.Namespace, module: Module) -> str:
    if call.decode is not None:
        made = module.decode(bytes.fromhex(call.decode), fieldbus=call.fieldbus)
    else:
        values = dict(one.split("=", 1) for one in call.set)
        made = module.configure(values, fieldbus=call.fieldbus)
    if call.compare is not None:
        read = module.decode(bytes.fromhex(call.compare), fieldbus=call.fieldbus)
        found = made.compare(read)
        return found.json() if call.format == "json" else found.text()
    return in_format(made, call.format, call.changed)


def in_format(made: Configuration, form: str, changed: bool) -> str:
    forms = {"text": made.text, "json": made.json, "csv": made.csv, "values": made.values_file}
    return forms[form](changed=changed)


def channels_output(call: argparse.Namespace, channels: Channels) -> str:
    if call.picture is not None:
        return channels.svg()
    forms = {"text": channels.text, "json": channels.json, "csv": channels.csv}
    listed = {**forms, "st": channels.declarations}[call.format]()
    return channels.drawing() + "\n" + listed if call.map else listed


def output_of(words: list[str]) -> str:
    call = options().parse_args(words)
    module = Module.load(call.file, input_offset=call.in_offset, output_offset=call.out_offset)
    if call.verb == "config":
        return config_output(call, module)
    return channels_output(call, module.channels)


class RecordedOutputs(unittest.TestCase):
    def test_each_is_the_same(self) -> None:
        os.chdir(BUILD)  # calls name files relative to it
        calls = [line.split() for line in (GOLDEN / "calls.txt").read_text("utf-8").splitlines()]
        compared = 0
        for name, *words in calls:
            if words[:1] in (["config"], ["channels"]):
                with self.subTest(name), warnings.catch_warnings():
                    warnings.simplefilter("ignore", SideEffectWarning)
                    expected = (GOLDEN / "expected" / name).read_bytes().decode("utf-8")
                    self.assertEqual(output_of(words), expected)
                    compared += 1
        self.assertGreater(compared, 20)


if __name__ == "__main__":
    unittest.main()
