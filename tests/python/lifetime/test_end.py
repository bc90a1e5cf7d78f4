"""The end of the interpreter while objects live and threads run."""

from __future__ import annotations

import subprocess
import sys
import tempfile
import unittest

from examples import PUMP_HOUSE, path_of, python_environment

_OBJECTS = """
import sys, mxmodule
module = mxmodule.Module.load(sys.argv[1])
made = module.configure()
plan = mxmodule.Station.load(sys.argv[2]).plan()
catalogue = mxmodule.Catalogue.open("sqlite:" + sys.argv[3], create=True)
entries = iter(catalogue)
class Cycle:
    def __del__(self):
        try:
            self.module.compose(), self.made.text()
        except mxmodule.ClosedError:
            pass
cycle = Cycle()
cycle.cycle, cycle.module, cycle.made = cycle, module, made
sys.modules["somewhere"] = cycle
"""

# What the C library runs at the end comes after the end of the libraries: meanwhile threads run on.
_DAEMONS = """
import ctypes, sys, threading, time
libc = ctypes.CDLL(None)
libc.on_exit(libc.usleep, None)
import mxmodule
begun = threading.Barrier(5)
def work():
    begun.wait()
    while True:
        mxmodule.Station.load(sys.argv[4]).plan()
for _ in range(4):
    threading.Thread(target=work, daemon=True).start()
begun.wait()
time.sleep(0.05)
sys.exit(200 * 256 + 7)  # the system passes on the last byte, usleep takes all
"""

_CHILD = """
import os, sys, mxmodule
module = mxmodule.Module.load(sys.argv[1])
catalogue = mxmodule.Catalogue.open("sqlite:" + sys.argv[3], create=True)
child = os.fork()
if child == 0:
    sys.exit(0)
assert os.waitpid(child, 0)[1] == 0
assert len(catalogue) == 0
"""


class End(unittest.TestCase):
    def end_of(self, code: str) -> int:
        with tempfile.TemporaryDirectory() as folder:
            call = [sys.executable, "-c", code, path_of("MX0304"), PUMP_HOUSE, f"{folder}/a.sqlite"]
            call.append(str(PUMP_HOUSE.with_name("row-of-64.yaml")))
            ended = subprocess.run(
                call, env=python_environment(), capture_output=True, text=True, timeout=60
            )
        self.assertEqual(ended.stderr, "")
        return ended.returncode

    def test_with_objects_and_cycles(self) -> None:
        self.assertEqual(self.end_of(_OBJECTS), 0)

    def test_with_daemon_threads_inside(self) -> None:
        for _ in range(3):
            self.assertEqual(self.end_of(_DAEMONS), 7)

    def test_of_a_child(self) -> None:
        self.assertEqual(self.end_of(_CHILD), 0)


if __name__ == "__main__":
    unittest.main()
