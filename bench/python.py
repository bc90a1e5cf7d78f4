#!/usr/bin/env python3
"""Times of the Python package beside the same work in C++, in turn: the channels of 1,000 modules as a data frame, a
composed parameter image of a small module, and the import.

Usage: python.py BUILD [REPETITIONS]

scripts/bench calls it with a release. Prints medians and the promised limits.
"""
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

build = pathlib.Path(sys.argv[1]).resolve()
repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 15
modules_in_frame = 1000 if repetitions > 1 else 20
project = pathlib.Path(__file__).resolve().parent.parent
environment = {**os.environ, "LD_LIBRARY_PATH": str(build / "lib"), "PYTHONPATH": str(project / "python")}
if os.environ.get("LD_LIBRARY_PATH") != environment["LD_LIBRARY_PATH"]:
    os.execve(sys.executable, [sys.executable, *sys.argv], environment)

import mxmodule  # noqa: E402  the environment of the process leads to it

IMPORT = "import time; t = time.perf_counter(); import mxmodule; print(time.perf_counter() - t)"
missed = []


class Reference:
    """The same work in C++."""

    def __init__(self, folder, count):
        program = [build / "bin/bench-python", folder, str(count)]
        self.process = subprocess.Popen(program, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def nanoseconds(self, work):
        """Returns how long `work` took, and its result."""
        self.process.stdin.write(work + "\n")
        self.process.stdin.flush()
        took, result = self.process.stdout.readline().split()
        return int(took), int(result)


def timed(work, times=1):
    """Returns how many nanoseconds one of `times` calls took, and the last result."""
    begin = time.perf_counter_ns()
    for _ in range(times):
        result = work()
    return (time.perf_counter_ns() - begin) / times, result


def compare(reference, name, work, times=1):
    """Returns the medians of Python and of C++, whose results must be the same."""
    pairs = []
    for _ in range(repetitions):
        in_python, made = timed(work, times)
        in_cpp, expected = reference.nanoseconds(name)
        if made != expected:
            sys.exit(f"{name}: Python made {made}, C++ {expected}")
        pairs.append((in_python, in_cpp))
    return statistics.median(one for one, _ in pairs), statistics.median(one for _, one in pairs)


def report(name, found, limit, unit):
    verdict = "" if found <= limit else "  missed"
    print(f"{name:64}{found:10.2f} {unit:3} at most {limit}{verdict}")
    missed.extend([name] if verdict else [])


def time_of_import(compiled):
    """Returns the milliseconds of an import of modules that are in the folder `compiled` as after an installation."""
    settings = {**environment, "PYTHONPYCACHEPREFIX": compiled}
    settings.pop("PYTHONDONTWRITEBYTECODE", None)
    done = subprocess.run([sys.executable, "-c", IMPORT], env=settings, check=True, capture_output=True, text=True)
    return float(done.stdout) * 1000


with tempfile.TemporaryDirectory() as folder:
    reference = Reference(folder, modules_in_frame)
    reference.nanoseconds("compose")  # the modules are written now
    files = sorted(pathlib.Path(folder).iterdir())
    mxmodule.channels_dataframe([])  # pandas is imported now
    small = mxmodule.Module.load(build / "examples/modules/MX0304.bin")
    frame, columns = compare(reference, "channels", lambda: len(
        mxmodule.channels_dataframe(mxmodule.Module.load(file) for file in files)))
    composed, in_cpp = compare(reference, "compose", lambda: len(small.compose({"AI 1/Upper limit": "9.5 V"})), 1000)

print(f"data frame of the channels of {len(files)} modules: {frame / 1e6:.1f} ms, the same in C++ {columns / 1e6:.1f} ms")
report("data frame / C++", frame / columns, 2, "")
print(f"compose in Python {composed / 1e3:.1f} us, in C++ {in_cpp / 1e3:.1f} us")
report("compose in Python - in C++", (composed - in_cpp) / 1e3, 50, "us")
with tempfile.TemporaryDirectory() as folder:
    time_of_import(folder)  # compiles them
    report("import", statistics.median(time_of_import(folder) for _ in range(repetitions)), 50, "ms")
sys.exit(1 if missed and repetitions > 1 else 0)
