"""Libraries that are missing or of another version."""

from __future__ import annotations

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import mxmodule
from examples import BUILD, path_of, python_environment

_IMPORT = """\
try:
    import mxmodule
except ImportError as failure:
    print(type(failure).__name__, failure.place, failure, sep="\\n")
else:
    print("imported")
"""


class Libraries(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        package = pathlib.Path(mxmodule.__file__).parent
        shutil.copytree(package, self.folder / "mxmodule")

    def run_python(self, code: str, libraries: str = "") -> str:
        environment = python_environment(PYTHONPATH=str(self.folder), LD_LIBRARY_PATH=libraries)
        call = [sys.executable, "-c", code]
        return subprocess.check_output(call, env=environment, text=True)

    def empty_library(self, folder: pathlib.Path, name: str) -> None:
        """Puts a library without functions into `folder`."""
        folder.mkdir()
        path = str(folder / name)
        call = ["cc", "-shared", "-nostdlib", "-x", "c", "/dev/null", "-o", path]
        subprocess.run(call, check=True)

    def test_a_missing_library_is_named(self) -> None:
        kind, place, text, hint = self.run_python(_IMPORT).splitlines()
        self.assertEqual((kind, place), ("MissingLibrary", "libmxmodule.so.1"))
        self.assertIn("libmxmodule.so.1 cannot be loaded", text)
        self.assertIn("python3-mxmodule", hint)

    def test_a_library_without_a_function_is_of_another_version(self) -> None:
        old = self.folder / "old"
        self.empty_library(old, "libmxmodule.so.1")
        kind, place, text, _ = self.run_python(_IMPORT, str(old)).splitlines()
        self.assertEqual((kind, place), ("MissingLibrary", "libmxmodule.so.1"))
        self.assertRegex(text, r"it has no mxmodule_\w+: it is of another version$")

    def test_the_libraries_of_a_wheel_come_first(self) -> None:
        folder = self.folder / "mxmodule" / "_libraries"
        self.empty_library(folder, "libmxmodule-mxwheel.so.1")
        _, _, text, hint = self.run_python(_IMPORT, str(BUILD / "lib")).splitlines()
        self.assertIn("another version", text)
        self.assertIn("install the wheel of mxmodule again", hint)

    def test_the_package_works_in_any_folder(self) -> None:
        code = f"import mxmodule; print(mxmodule.Module.load({path_of('MX0304')!r}).module_id)"
        self.assertEqual(self.run_python(code, str(BUILD / "lib")), "5a030304\n")

    def test_import_takes_no_large_modules(self) -> None:
        slow = ("dataclasses", "inspect", "pandas", "asyncio", "html", "subprocess")
        code = f"import sys, mxmodule; print([one for one in {slow!r} if one in sys.modules])"
        self.assertEqual(self.run_python(code, str(BUILD / "lib")), "[]\n")


if __name__ == "__main__":
    unittest.main()
