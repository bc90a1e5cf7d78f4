"""Images and registers that mxtool config composes and decodes."""

from __future__ import annotations

from fractions import Fraction

import assignments
import registers
from assignments import identifier
from case import Case, as_json, expect
from description import MODULE, Module, Parameter, described
from tool import Answer
from values import Accepted, nearest, physical, read, write


def without_shared_bits(parameters: list[Parameter]) -> list[Parameter]:
    taken: set[int] = set()
    chosen = []
    for one in parameters:
        if not taken & one.places():
            chosen.append(one)
            taken |= one.places()
    return chosen


def settings(values: list[tuple[Parameter, str]], case: Case) -> list[str]:
    words = []
    for one, text in values:
        words += ["--set", assignments.assignment(case.module, one, text, case.choose)]
    return words


def with_values(module: Module, values: list[tuple[Parameter, int]]) -> bytes:
    image = bytearray(module.block)
    for one, raw in values:
        write(one, image, raw)
    return bytes(image)


def image_of(shown: dict) -> bytes:
    return bytes.fromhex(shown["image"])


def shown_value_is_right(case: Case, one: Parameter, shown: dict, image: bytes, answer: Answer) -> None:
    """The library's text of a value: decimal digits, or a binary32 in six decimals."""
    if not case.module.is_usable(one):
        absent = one.converted or case.module.lies_in_image(one) or shown["value"] == ""
        expect(absent, "a value where there is none", answer, described(one), shown)
        return
    raw = read(one, image)
    if not one.converted:
        expect(shown["value"] == str(raw), f"value {raw} expected", answer, described(one), shown)
        return
    value = physical(case.module, one, raw)
    factor, offset, _ = case.module.conversion_of(one)
    slack = (abs(raw * factor) + abs(offset)) / 2 ** 22 + Fraction(1, 10 ** 6)
    near = "inf" in shown["value"] or abs(Fraction(shown["value"]) - value) <= slack
    expect(near, f"value near {float(value)} expected", answer, described(one), shown)
    digits = shown["shown"].partition(" (outside ")[0].removesuffix(" " + case.module.unit_of(one))
    read_again = nearest(case.module, one, Fraction(digits))
    expect(raw in read_again, f"what is shown is not {raw}", answer, described(one), shown)


def parameters_are_right(case: Case, shown: dict, image: bytes, answer: Answer) -> None:
    listed = {f"#{one['id']}": one for one in shown["parameters"]}
    for one in case.module.parameters:
        entry = listed.get(identifier(case.module, one))
        expect(entry is not None, "a parameter is missing", answer, described(one))
        channel = None if one.channel == MODULE else one.channel
        expect(entry["name"] == one.name and entry["channel"] == channel, "name or channel", answer, described(one))
        expect(entry["unit"] == case.module.unit_of(one), "unit", answer, described(one), entry)
        shown_value_is_right(case, one, entry, image, answer)
        if case.module.lies_in_image(one):
            its_bytes = image[one.position:one.position + one.width]
            place = (entry["byte"], entry["size"], bytes.fromhex(entry["hex"]))
            expect(place == (one.position, one.width, its_bytes), "place or bytes", answer, described(one), entry)


def choose_values(case: Case) -> list[tuple[Parameter, int, str]]:
    """Parameters, raw values that they accept, and texts for them."""
    chosen = []
    shuffled = case.choose.sample(case.usable(), len(case.usable()))
    for one in without_shared_bits(shuffled):
        values = assignments.good_values(case.module, one, case.choose)
        if not values or case.choose.random() < 0.1:
            continue
        raw = case.choose.choice(values)
        text = assignments.value_text(case.module, one, raw, case.choose)
        if text is not None:
            chosen.append((one, raw, text))
    return chosen


def composing(case: Case) -> bytes:
    chosen = choose_values(case)
    image = with_values(case.module, [(one, raw) for one, raw, _ in chosen])
    words = settings([(one, text) for one, _, text in chosen], case)
    answer = case.config(*words, "--format", "json")
    shown = as_json(answer, "values that fit are refused")
    expect(image_of(shown) == image, f"image {image.hex(' ')} expected", answer, shown["image"],
           *[described(one) + f" raw {raw} text {text}" for one, raw, text in chosen])
    parameters_are_right(case, shown, image, answer)
    reading_back(case, answer.output, image)
    other_values_files(case, words, image)
    if case.choose.random() < 0.25:
        binary = case.config(*words, "--format", "binary")
        expect(binary.code == 0 and binary.output == image, "binary differs from JSON", binary)
    return image


def reading_back(case: Case, values: bytes, image: bytes, name: str = "values.json") -> None:
    """The output of config is a values file for the same image."""
    (case.tool.folder / name).write_bytes(values)
    accepted = all(one.fits_its_byte and read(one, image) in Accepted(case.module, one)
                   for one in case.module.parameters if case.module.lies_in_image(one))
    answer = case.config("--values", name, "--format", "binary", *([] if accepted else ["--force"]))
    expect(answer.code == 0 and answer.output == image, f"{name} read back: {image.hex(' ')} expected", answer,
           answer.output.hex(" "), values.decode("utf-8", "replace") if name != "values.json" else "")


def other_values_files(case: Case, words: list[str], image: bytes) -> None:
    """The same as CSV, with any separator, or as a values file to start from."""
    if case.choose.random() < 0.5:
        separator = case.choose.choice(["comma", "semicolon", "tab"])
        name, form = "values.csv", ["csv", "--separator", separator, *case.choose.choice([[], ["--bom"]])]
    else:
        name, form = "values.yaml", ["values"]
    answer = case.config(*words, "--format", *form)
    expect(answer.code == 0, f"no {name}", answer)
    reading_back(case, answer.output, image, name)


def decoding(case: Case, image: bytes) -> None:
    answer = case.config("--decode", image.hex(), "--format", "json")
    shown = as_json(answer, "an image cannot be decoded")
    expect(image_of(shown) == image, "another image", answer, shown["image"])
    parameters_are_right(case, shown, image, answer)
    reading_back(case, answer.output, image)


def some_image(case: Case) -> bytes:
    """Any bits at the parameters, those of the default block between them."""
    values = []
    for one in without_shared_bits(case.usable()):
        any_bits = case.choose.randbytes(8)
        image = bytearray(len(case.module.block) + 8)
        image[one.position:one.position + 8] = any_bits
        values.append((one, read(one, bytes(image))))
    return with_values(case.module, values)


def modbus(case: Case, image: bytes) -> None:
    chosen = []
    for one in without_shared_bits(case.usable()):
        raw = read(one, image)
        text = assignments.value_text(case.module, one, raw, case.choose) if raw in Accepted(case.module, one) else None
        if text is not None:
            chosen.append((one, raw, text))
    words = [word for one, _, text in chosen for word in ("--set", f"{identifier(case.module, one)}={text}")]
    image = with_values(case.module, [(one, raw) for one, raw, _ in chosen])
    answer = case.config(*words, "--fieldbus", "modbus", "--format", "binary")
    try:
        expected = registers.registers(case.module, image)
    except registers.NoRegisters as missing:
        expect(answer.code != 0 and answer.output == b"", f"no registers expected for {missing}", answer)
        return
    expect(answer.code == 0 and answer.output == expected, f"registers {expected.hex(' ')} expected", answer,
           answer.output.hex(" "), image.hex(" "), *map(described, registers.order(case.module)))
    decode_registers(case, expected, image)


def decode_registers(case: Case, given: bytes, image: bytes) -> None:
    (case.tool.folder / "registers.bin").write_bytes(given)  # as text the digits of one register may be decimal
    answer = case.config("--fieldbus", "modbus", "--decode", "registers.bin", "--format", "json")
    shown = as_json(answer, "registers cannot be decoded")
    listed = registers.order(case.module)
    for one in without_shared_bits(listed):
        entry = next(entry for entry in shown["parameters"] if f"#{entry['id']}" == identifier(case.module, one))
        if not one.has_options or one.width == 1:
            shown_value_is_right(case, one, entry, image, answer)
