"""Texts that must build the same bytes, and newer versions to be compared by diff."""

from __future__ import annotations

import json
import random

import stored_images
from case import Case, expect
from description import Module, described
from mxfile import mx_file
from newer import comparable
from newer import newer as newer_version
from textform import text_form
from tool import Tool

NEWER_VERSIONS = 3


def diffing(case: Case) -> None:
    old = comparable(case.module)
    for _ in range(NEWER_VERSIONS if old.parameters else 0):
        compare(case, old, newer_version(case.choose, old))


def compare(case: Case, old: Module, newer: Module) -> None:
    """Compares the verdict on stored images with the images themselves."""
    if not stored_images.is_comparable(old, newer):
        return
    verdict = stored_images.judge(old, newer, case.choose)
    (case.tool.folder / "older.bin").write_bytes(mx_file(old))
    (case.tool.folder / "newer.bin").write_bytes(mx_file(newer))
    answer = case.tool.run("diff", "older.bin", "newer.bin", "--format", "json")
    expect(answer.code in (0, 1), "no verdict", answer)
    shown = json.loads(answer.output)
    details = [verdict, shown["because"], "newer:", newer.block.hex(" ")] + [
        f"{described(one)} {newer.options_of(one)} {newer.conversion_of(one)}" for one in newer.parameters]
    stays_valid = shown["parameter_image_stays_valid"]
    expect(stays_valid == verdict.valid or (verdict.valid and verdict.too_strict), f"valid: {verdict.valid} expected",
           answer, *details)
    breaking = any(one["effect"] == "breaking" for one in shown["differences"])
    expect(verdict.valid or breaking, "no difference is called breaking", answer, *details)


def building(tool: Tool, modules: dict[str, Module], seed: str) -> dict[str, str]:
    """Builds the texts of many modules in one call; returns the failures by the module's name."""
    for name, module in modules.items():
        text = text_form(module, random.Random(f"{seed}/{name}"))
        (tool.folder / f"{name}.yaml").write_text(text, encoding="utf-8")
    (tool.folder / "built").mkdir(exist_ok=True)
    answer = tool.run("build", *[f"{name}.yaml" for name in modules], "-o", "built/")
    wrong = {}
    for name, module in modules.items():
        built = tool.folder / "built" / f"{name}.bin"
        if not built.exists() or built.read_bytes() != mx_file(module):
            reported = [line for line in answer.errors.splitlines() if line.startswith(f"{name}.yaml")]
            text = (tool.folder / f"{name}.yaml").read_text(encoding="utf-8")
            wrong[name] = "\n  ".join(["the text form builds other bytes, or none", *reported, text])
    return wrong
