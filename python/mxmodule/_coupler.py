"""The coupler of a station over Modbus."""

from __future__ import annotations

import threading
import time
import weakref
from typing import Any, Iterator, Mapping, NamedTuple, Union

from ._arguments import Value, text_argument, value_argument
from ._connection import Connection
from ._coupler_reports import ApplyReport, CouplerDifference, NotDone, OutputReport
from ._errors import RequestError, request_finding, wrong_type
from ._handle import Handle
from ._library import TEXT, call, json_of, text_of
from ._mxonline import OutputValue, library


class Traffic(NamedTuple):
    """What went over the bus.

    - `requests`: requests that were answered, also by an exception, each once.
    - `registers_read`: registers in the answers.
    - `registers_written`: registers written.
    - `repetitions`: requests sent again after a fault or a busy coupler.
    """

    requests: int
    registers_read: int
    registers_written: int
    repetitions: int


class Sample(NamedTuple):
    """The values of channels.

    - `time`: in UTC: "2026-01-31T08:15:00.123Z".
    - `values`: by alias, else MODULE/CHANNEL: a number; of more than 64 bits its bytes in
      hexadecimal.
    - `changed`: the names of those that differ from the sample before.
    """

    time: str
    values: Mapping[str, Union[int, str]]
    changed: tuple[str, ...]


class Coupler(Connection):
    """The coupler of a station over Modbus. Connects at the first operation, and again after a
    fault, which raises `OutputError`.

    Threads may share it: one operation is carried out after the other. After `close` its watches
    and `Outputs` raise `ClosedError`; what was written stays.
    """

    __slots__ = ("_uses",)

    def __init__(self, pointer: int) -> None:
        """Owns the mxonline_coupler at `pointer`; use `Plan.connect`."""
        super().__init__(pointer, library.mxonline_coupler_free)
        self._uses: set[weakref.ref[_Use]] = set()
        self._shown = text_of(library.mxonline_coupler_target, self._open_handle())

    @property
    def target(self) -> str:
        """Where it is, with everything stated: "tcp:127.0.0.1:502"."""
        return self._shown

    @property
    def traffic(self) -> Traffic:
        """What went over the bus until now."""
        with self._lock:
            made = json_of(library.mxonline_coupler_traffic, self._open_handle())
        return Traffic(*(made[name] for name in Traffic._fields))

    def close(self) -> None:
        """Closes it. A call of another thread ends first; later ones raise `ClosedError`."""
        super().close()
        for reference in list(self._uses):
            use = reference()
            if use is not None:
                use.handle = None

    # Parameters.

    def difference(self) -> CouplerDifference:
        """Reads identity and parameters of all modules and compares them with the plan. Writes
        nothing."""
        with self._lock:
            return CouplerDifference(call(library.mxonline_difference_of, self._open_handle()))

    def apply(self, confirmed: CouplerDifference) -> ApplyReport:
        """Writes the parameters that differ, commits, reads everything back and compares.

        `confirmed` is what was agreed to: if the coupler no longer differs in the same way, or a
        module is not that of the station, nothing is written, which raises `Error`. If afterwards
        anything is not as planned, it raises `NotDone`, which has the report.
        """
        if not isinstance(confirmed, CouplerDifference):
            raise wrong_type("what is confirmed", confirmed, "CouplerDifference")
        with self._lock:
            pointer = call(library.mxonline_apply, self._open_handle(), confirmed._handle)
        report = ApplyReport(pointer)
        if not report.is_done:
            raise NotDone(report.findings, report, report.verdict)
        return report

    def read_station(self) -> str:
        """Returns the text of the station file in which the modules state the parameters that the
        coupler has; every other byte is kept."""
        with self._lock:
            return text_of(library.mxonline_read_station, self._open_handle())

    # Values of channels.

    def read(self, *names: str) -> Mapping[str, int | str]:
        """Returns the values of channels: of those that `names` select, as `watch` takes them, or
        of all."""
        with self._lock:
            return self._sample(self._watching(names)).values

    def watch(self, *names: str, interval: float = 1.0) -> Iterator[Sample]:
        """Reads the values of channels every `interval` seconds, without an end.

        A name is an alias; MODULE/CHANNEL, with name or position of the module; the name of a
        channel that no other has; or the name or position of a module for all of its channels. No
        names: all channels. Unknown and ambiguous names raise `RequestError`, all of them, at once.
        """
        seconds = _seconds(interval)
        with self._lock:
            watch = self._watching(names)
        return self._samples(watch, seconds)

    def _samples(self, watch: _Use, interval: float) -> Iterator[Sample]:
        due = time.monotonic()
        while True:
            with self._lock:
                sample = self._sample(watch)
            yield sample
            due = max(due + interval, time.monotonic())
            time.sleep(max(0.0, due - time.monotonic()))

    def _sample(self, watch: _Use) -> Sample:
        made = json_of(library.mxonline_watch_sample, self._handle_of(watch))
        return Sample(made["time"], made["values"], tuple(made["changed"]))

    def _watching(self, names: tuple[str, ...]) -> _Use:
        arguments = [text_argument(one, "the name of a channel") for one in names]
        array = (TEXT * len(arguments))(*arguments)
        pointer = call(library.mxonline_watch_of, self._open_handle(), array, len(arguments))
        return self._used(Handle(pointer, library.mxonline_watch_free, of_one_process=True))

    def outputs(self, values: Mapping[str, Value]) -> Outputs:
        """Returns the outputs that `values` name, to be set. Sends nothing.

        Unknown names, inputs, values out of range and channels that are set twice raise
        `RequestError`, all of them.
        """
        if not isinstance(values, Mapping):
            raise wrong_type("the values", values, "dict")
        pairs = [
            OutputValue(text_argument(name, "the name of a channel"), _output_value(value, name))
            for name, value in values.items()
        ]
        array = (OutputValue * len(pairs))(*pairs)
        with self._lock:
            pointer = call(library.mxonline_outputs_of, self._open_handle(), array, len(pairs))
        return Outputs(self, pointer, tuple(values))

    def set(self, values: Mapping[str, Value]) -> OutputReport:
        """Sets outputs, which stay so, reads them back, and changes no other bit. Raises `NotDone`
        if one is not as wanted."""
        return self.outputs(values).write()

    # What uses it.

    def _used(self, handle: Handle) -> _Use:
        use = _Use(handle)
        self._uses.add(weakref.ref(use, self._uses.discard))
        return use

    def _handle_of(self, use: _Use) -> Handle:
        """Returns the handle. Raises `ClosedError`."""
        handle = use.handle
        self._open_handle()  # it is closed before its uses are
        assert handle is not None
        return handle


class _Use:
    """A handle that uses a coupler, and keeps it connected until it is freed."""

    __slots__ = ("handle", "__weakref__")

    def __init__(self, handle: Handle) -> None:
        self.handle: Handle | None = handle


class Outputs:
    """Output channels and the values that they are to have.

        with coupler.outputs({"P_101": 1}) as outputs:
            outputs.write()

    gives them at the end the values that they had before.
    """

    __slots__ = ("_coupler", "_use", "_names")

    def __init__(self, coupler: Coupler, pointer: int, names: tuple[str, ...] = ()) -> None:
        """Owns the mxonline_outputs at `pointer` for channels of these names; use
        `Coupler.outputs`."""
        handle = Handle(pointer, library.mxonline_outputs_free, of_one_process=True)
        self._coupler = coupler
        self._use = coupler._used(handle)
        self._names = names

    def read(self) -> OutputReport:
        """Reads the outputs. Writes nothing."""
        return self._made(library.mxonline_outputs_read)

    def write(self) -> OutputReport:
        """Sets the outputs and reads them back. Raises `NotDone` if one is not as wanted."""
        return self._made(library.mxonline_outputs_write)

    def restore(self) -> OutputReport:
        """Gives the outputs the values that they had before the first `write`; tries three times.
        Raises `NotDone` if one is not known to be so."""
        return self._made(library.mxonline_outputs_restore)

    def _made(self, function: Any) -> OutputReport:
        with self._coupler._lock:
            report = OutputReport(json_of(function, self._coupler._handle_of(self._use)))
        if report.is_done is False:
            raise NotDone(report.findings, report, "Not all outputs are as wanted")
        return report

    def __enter__(self) -> Outputs:
        return self

    def __exit__(self, *_: object) -> None:
        self.restore()

    def __repr__(self) -> str:
        return f"<Outputs {', '.join(map(repr, self._names))} of {self._coupler!r}>"


def _output_value(value: Value, name: str) -> bytes:
    """Returns `value` as a text; of an output of one bit True and False are meant."""
    if isinstance(value, bool):
        return b"1" if value else b"0"
    return value_argument(value, name)


def _seconds(interval: float) -> float:
    """Returns `interval`. Raises `WrongType`, or `RequestError` for none that can be waited for."""
    if isinstance(interval, bool) or not isinstance(interval, (int, float)):
        raise wrong_type("interval", interval, "float")
    if not 0 <= interval <= threading.TIMEOUT_MAX:
        accepted = f"0 to {threading.TIMEOUT_MAX:.0f} seconds"
        shown = repr(float(interval)) if abs(interval) < 1e300 else "another number"
        text = f"Found {shown} for interval, expected {accepted}"
        raise RequestError([request_finding(text, place="interval", accepted=[accepted])])
    return float(interval)
