"""Simulated couplers, for tests without hardware."""

from __future__ import annotations

from typing import NamedTuple

from ._arguments import Value, text_argument
from ._connection import Connection
from ._coupler import _output_value
from ._library import call, json_of, text_of
from ._mxonline import library


class SimulatorCounts(NamedTuple):
    """What clients did with a simulated coupler.

    - `connections`: over TCP.
    - `requests`: for its unit.
    - `exceptions`: of these, answered with an exception.
    - `faults`: of the requests, those that had a fault.
    - `registers_read`: in answers.
    - `registers_written`: by requests that were carried out.
    """

    connections: int
    requests: int
    exceptions: int
    faults: int
    registers_read: int
    registers_written: int


class Simulator(Connection):
    """The coupler of a station, simulated: it answers Modbus requests in a thread of its own.

    It begins with the defaults of the modules, inputs and outputs of zero; an output changes no
    input. Closing it ends all connections.
    """

    __slots__ = ()

    def __init__(self, pointer: int) -> None:
        """Owns the mxonline_simulator at `pointer`; use `Plan.simulate`."""
        super().__init__(pointer, library.mxonline_simulator_free)
        self._shown = text_of(library.mxonline_simulator_address, self._open_handle())

    @property
    def address(self) -> str:
        """Where clients find it, with the port that the system chose: "tcp:127.0.0.1:40123"."""
        return self._shown

    @property
    def counts(self) -> SimulatorCounts:
        """What clients did until now."""
        with self._lock:
            made = json_of(library.mxonline_simulator_counts, self._open_handle())
        return SimulatorCounts(*(made[name] for name in SimulatorCounts._fields))

    def value(self, channel: str) -> str:
        """Returns the value of a channel: "1", "-5"; of more than 64 bits its bytes in hexadecimal.
        Raises `RequestError` if there is none."""
        argument = text_argument(channel, "the name of a channel")
        with self._lock:
            return text_of(library.mxonline_simulator_value, self._open_handle(), argument)

    def set_input(self, channel: str, value: Value) -> None:
        """Sets an input, as a module of the process would."""
        self._set(library.mxonline_simulator_set_input, channel, value)

    def set_output(self, channel: str, value: Value) -> None:
        """Sets an output."""
        self._set(library.mxonline_simulator_set_output, channel, value)

    def _set(self, function: object, channel: str, value: Value) -> None:
        name = text_argument(channel, "the name of a channel")
        with self._lock:
            call(function, self._open_handle(), name, _output_value(value, channel))
