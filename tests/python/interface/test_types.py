"""Type hints, docstrings and the oldest Python."""

from __future__ import annotations

import ast
import inspect
import os
import pathlib
import re
import subprocess
import unittest
from typing import Iterator

import mxmodule
from examples import BUILD, PROJECT

PACKAGE = PROJECT / "python" / "mxmodule"
USES = pathlib.Path(__file__).with_name("typed_uses.py")


class Types(unittest.TestCase):
    def test_package_passes_and_uses_pass_or_not_as_they_say(self) -> None:
        call = ["mypy", "--config-file", str(PROJECT / "python" / "mypy.ini"), "--no-error-summary"]
        call += ["--cache-dir", str(BUILD / "mypy"), "--no-pretty", str(PACKAGE), str(USES)]
        environment = {**os.environ, "PYTHONPATH": "", "MYPYPATH": str(PROJECT / "python")}
        checked = subprocess.run(call, env=environment, capture_output=True, text=True, check=False)
        found, others = set(), []
        for message in (checked.stdout + checked.stderr).splitlines():
            place = re.match(rf".*{USES.name}:(\d+): (error|note)", message)
            if place is None:
                others.append(message)
            elif place.group(2) == "error":
                found.add(int(place.group(1)))
        self.assertEqual(others, [])
        lines = USES.read_text("utf-8").splitlines()
        wanted = {number for number, one in enumerate(lines, 1) if one.endswith("# error")}
        self.assertGreater(len(wanted), 15)
        self.assertEqual(found, wanted)

    def test_hints_are_for_users(self) -> None:
        self.assertTrue((PACKAGE / "py.typed").exists())


class Syntax(unittest.TestCase):
    def test_every_file_is_of_python_3_9(self) -> None:
        files = sorted(PACKAGE.glob("*.py"))
        self.assertGreater(len(files), 15)
        for path in files:
            ast.parse(path.read_text("utf-8"), str(path), feature_version=(3, 9))

    def test_no_line_is_too_long(self) -> None:
        files = [*PACKAGE.glob("*.py"), *(PROJECT / "tests" / "python").rglob("*.py")]
        long = [
            f"{path}:{number}"
            for path in files
            for number, line in enumerate(path.read_text("utf-8").splitlines(), 1)
            if len(line) > 100
        ]
        self.assertEqual(long, [])


def public_members(kind: type) -> Iterator[str]:
    """Yields the names of the public members that a class of the package defines."""
    for name, member in vars(kind).items():
        if not name.startswith("_") and (callable(member) or isinstance(member, property)):
            yield name
        elif isinstance(member, (classmethod, staticmethod)) and not name.startswith("_"):
            yield name


class Docstrings(unittest.TestCase):
    def test_every_public_name_says_what_it_is(self) -> None:
        missing = []
        for name in mxmodule.__all__:
            one = getattr(mxmodule, name)
            if not inspect.getdoc(one) or one.__doc__ is None:
                missing.append(name)
            if inspect.isclass(one):
                for member in public_members(one):
                    if not inspect.getdoc(getattr(one, member)):
                        missing.append(f"{name}.{member}")
        self.assertEqual(missing, [])

    def test_every_member_of_a_row_is_in_its_docstring(self) -> None:
        missing, members = [], 0
        for name in mxmodule.__all__:
            one = getattr(mxmodule, name)
            for member in getattr(one, "_fields", ()):
                members += 1
                if f"\n    - `{member}`: " not in one.__doc__:
                    missing.append(f"{name}.{member}")
        self.assertEqual(missing, [])
        self.assertGreater(members, 50)

    def test_all_names_are_public(self) -> None:
        names = {name for name in vars(mxmodule) if not name.startswith("_")}
        modules = {name for name in names if inspect.ismodule(getattr(mxmodule, name))}
        self.assertEqual(names - modules - {"annotations"}, set(mxmodule.__all__))
        self.assertEqual(sorted(mxmodule.__all__, key=str), list(mxmodule.__all__))


if __name__ == "__main__":
    unittest.main()
