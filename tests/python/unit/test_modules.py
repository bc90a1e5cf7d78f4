"""What a module is, and how it is loaded."""

from __future__ import annotations

import copy
import gc
import gzip
import pathlib
import pickle
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

import mxmodule
from examples import FOLDER, MXTOOL, content_of, example, module_of, path_of, text_form
from mxmodule import InputError, Module, RequestError, WrongType

#: examples/modules/MX0304.yaml, parameter after parameter, numbers with their high byte first.
IMAGE_0304 = bytes.fromhex(
    "32"
    "00 251c dae4 003c 40"
    "01 251d dae3 003d 42"
    "02 251e dae2 003e 44"
    "09 251f dae1 003f 46"
)


class Modules(unittest.TestCase):
    def test_has_the_values_of_its_text_form(self) -> None:
        module = example("MX0304")
        self.assertEqual(module.label, "4 AI ±10 V / 0-20 mA")
        self.assertEqual(module.label_bytes, b"4 AI \xb110 V / 0-20 mA")  # Windows-1252
        self.assertEqual(module.module_id, "5a030304")
        self.assertEqual(module.device_type_id, "kv38.5a030304")
        self.assertEqual(module.default_image, IMAGE_0304)

    def test_has_properties_with_their_bytes(self) -> None:
        module = example("MX0304")
        values = {one.name: one.value for one in module.properties}
        self.assertEqual(values["moduleId"], "5a030304")
        self.assertEqual(values["brandVersion"], "2.1")
        self.assertEqual(module.properties["brandOrderCode"].value, "K38-304")
        self.assertEqual(len(module.property_bytes), len(module.properties))
        named = dict(zip((one.name for one in module.properties), module.property_bytes))
        self.assertEqual(named["brandVersion"], b"2.1")

    def test_has_sets_whose_members_exist(self) -> None:
        module = example("MX0304")
        sets = {one.name: one for one in module.sets}
        self.assertEqual(sets["basicInformation"].kind, "set")
        known = {one.id for one in module.properties} | {one.id for one in module.binary_objects}
        self.assertLessEqual(set(sets["basicInformation"].members), known)

    def test_has_binary_objects_and_a_product_picture(self) -> None:
        (picture,) = example("MX0304").binary_objects
        self.assertEqual((picture.name, picture.encoding), ("productImage", "base64"))
        self.assertEqual(picture.mime_type, "image/svgz")
        self.assertIn(b"<svg", gzip.decompress(picture.content))
        self.assertTrue(example("MX0304").product_picture().startswith("data:image/"))
        self.assertEqual(example("MX0701").product_picture(), "")

    def test_text_and_json_are_those_of_mxtool(self) -> None:
        for form, text in (("text", example("MX0701").text()), ("json", example("MX0701").json())):
            call = [MXTOOL, "show", "--format", form, path_of("MX0701")]
            self.assertEqual(text, subprocess.check_output(call).decode("utf-8"))

    def test_data_sheet_is_a_page(self) -> None:
        page = example("MX0304").datasheet()
        self.assertTrue(page.startswith("<!DOCTYPE html>"))
        self.assertIn("4 AI ±10 V / 0-20 mA", page)

    def test_picture_is_svg(self) -> None:
        picture = example("MX0304").svg()
        self.assertIsInstance(picture, str)
        self.assertEqual(ElementTree.fromstring(picture).tag, "{http://www.w3.org/2000/svg}svg")
        self.assertEqual(picture._repr_svg_(), picture)
        self.assertEqual(example("MX0304")._repr_svg_(), picture)
        self.assertIs(type(picture._repr_svg_()), str)

    def test_is_shown_in_one_line(self) -> None:
        self.assertEqual(repr(module_of()), "<Module 5a0fff01 'Test module' of test.yaml>")

    def test_offsets_move_its_data(self) -> None:
        module = example("MX0304").at(input_offset=10, output_offset=20)
        self.assertEqual([one.byte for one in module.channels], [10, 12, 14, 16])
        self.assertEqual(module.channels.input.first_byte, 10)
        self.assertEqual(module.channels.output.first_byte, 20)
        loaded = Module.load(path_of("MX0304"), input_offset=10)
        self.assertEqual(list(loaded.channels), list(module.channels))
        read = Module.from_bytes(content_of("MX0304"), input_offset=10)
        self.assertEqual(list(read.channels), list(module.channels))
        self.assertEqual([one.byte for one in example("MX0304").channels], [0, 2, 4, 6])

    def test_has_the_version_of_the_library(self) -> None:
        self.assertRegex(mxmodule.__version__, r"^\d+\.\d+\.\d+$")

    def test_copies_have_the_same_values(self) -> None:
        parameter = "{name: A, at: 0, type: UInt8, default: 7, range: [0, 9]}"
        module = module_of(f"parameters:\n  - {parameter}\n")
        copies = [copy.copy(module), copy.deepcopy(module)]
        configuration = copy.deepcopy(module.configure({"A": 8}))
        parameters = copy.deepcopy(module.parameters)
        del module
        gc.collect()
        self.assertEqual([one.compose({"A": 9}) for one in copies], [b"\x09", b"\x09"])
        self.assertEqual(configuration.image, b"\x08")
        self.assertEqual(parameters["A"].value, "7")

    def test_pickling_is_refused(self) -> None:
        module = example("MX0304")
        for one in (module, module.parameters, module.configure(), module.channels):
            with self.assertRaisesRegex(TypeError, "cannot be pickled.* load"):
                pickle.dumps(one)


class Loading(unittest.TestCase):
    def test_takes_every_kind_of_path(self) -> None:
        path = path_of("MX0304")
        for given in (path, path.encode(), pathlib.Path(path)):
            self.assertEqual(Module.load(given).module_id, "5a030304")

    def test_takes_the_text_form(self) -> None:
        module = Module.load(FOLDER / "MX0304.yaml")
        self.assertEqual(module.json(), example("MX0304").json())

    def test_takes_every_kind_of_bytes(self) -> None:
        content = content_of("MX0304")
        for given in (content, bytearray(content), memoryview(content)):
            self.assertEqual(Module.from_bytes(given).module_id, "5a030304")
        every_second = memoryview(b"".join(bytes((one, 0)) for one in content))[::2]
        self.assertEqual(Module.from_bytes(every_second).module_id, "5a030304")

    def test_name_is_that_of_the_file(self) -> None:
        self.assertEqual(example("MX0304").name, path_of("MX0304"))
        content = content_of("MX0304")
        self.assertEqual(Module.from_bytes(content).name, "<bytes>")
        self.assertEqual(Module.from_bytes(content, "from the bus").name, "from the bus")

    def test_a_missing_file_is_named(self) -> None:
        with self.assertRaises(InputError) as raised:
            Module.load("/nowhere/MX0304.bin")
        self.assertIn("/nowhere/MX0304.bin", str(raised.exception))

    def test_a_folder_is_no_module(self) -> None:
        with self.assertRaises(InputError):
            Module.load(FOLDER)

    def test_a_text_with_errors_has_all_with_their_places(self) -> None:
        text = text_form("parameters:\n  - {name: A, at: 0, type: UInt9, default: 1}\n  - 7\n")
        with self.assertRaises(InputError) as raised:
            Module.from_bytes(text, "wrong.yaml")
        # The head has ten lines, then comes "parameters:".
        places = [one.place for one in raised.exception.findings]
        self.assertEqual(places, ["wrong.yaml:12:28", "wrong.yaml:13:5", "wrong.yaml"])
        line = "  - {name: A, at: 0, type: UInt9, default: 1}"
        mark = " " * 27 + "^"
        self.assertEqual(raised.exception.findings[0].excerpt.splitlines(), [line, mark])
        shown = str(raised.exception).splitlines()
        self.assertEqual(shown[1:3], [line, mark])
        self.assertTrue(shown[3].startswith("wrong.yaml:13:5: "))

    def test_offsets_are_whole_numbers_of_32_bits(self) -> None:
        path = path_of("MX0304")
        for offset in (-1, 2**32, 10**30):
            with self.assertRaisesRegex(RequestError, "input_offset, expected 0 to 4294967295"):
                Module.load(path, input_offset=offset)
        for wrong in (True, 1.0, "1", None):
            with self.assertRaises(WrongType):
                Module.load(path, output_offset=wrong)
        self.assertRaises(RequestError, example("MX0304").at, input_offset=-1)

    def test_content_has_to_be_bytes(self) -> None:
        for wrong in ("text", 7, None, [1, 2]):
            with self.assertRaises(WrongType):
                Module.from_bytes(wrong)

    def test_paths_have_to_be_paths(self) -> None:
        for wrong in (7, None, 1.5, [path_of("MX0304")]):
            with self.assertRaises(WrongType):
                Module.load(wrong)
        with self.assertRaisesRegex(RequestError, "NUL"):
            Module.load("MX\0.bin")

    def test_a_text_that_is_no_path_is_refused(self) -> None:
        for path in ("\ud800.bin", "MX0304\0.bin"):
            with self.assertRaises(RequestError) as raised:
                Module.load(path)
            self.assertEqual(raised.exception.place, "the path")

    def test_content_that_was_released_is_refused(self) -> None:
        content = memoryview(content_of("MX0304"))
        content.release()
        with self.assertRaises(RequestError):
            Module.from_bytes(content)

    def test_a_path_may_have_any_bytes(self) -> None:
        with self.assertRaises(InputError):
            Module.load(b"/nowhere/\xff.bin")
        with self.assertRaises(InputError):
            Module.load("/nowhere/\udcff.bin")  # as os.listdir gives it

    def test_the_example_of_the_package_works(self) -> None:
        module = Module.load(path_of("MX0304"))
        image = module.compose({"AI 1/Upper limit": "9.5 V"})
        self.assertEqual(image, IMAGE_0304)


if __name__ == "__main__":
    unittest.main()
