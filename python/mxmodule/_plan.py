"""Plans: the places of modules and channels of a station, and what is made of them."""

from __future__ import annotations

import ctypes
import warnings
from typing import TYPE_CHECKING, Any, Callable

from ._arguments import choice_argument, fieldbus_argument, text_argument
from ._coupler import Coupler
from ._errors import UnknownName, request_finding, wrong_type
from ._findings import Finding, findings_of
from ._handle import Handle, not_from_library
from ._library import HANDLE, bytes_of, call, json_of, taken, text_of
from ._module import Module
from ._mxonline import library as online
from ._mxstation import library
from ._planned import (
    MODULE_COLUMNS,
    Declarations,
    Gap,
    ImageBytes,
    PlannedModule,
    bytes_of_image,
    planned_module,
)
from ._rows import Rows, Svg
from ._simulator import Simulator
from ._station_channels import StationChannels
from ._station_comparison import StationComparison

if TYPE_CHECKING:
    import pandas


_STYLES = ("byte", "index", "separate")
_SCOPES = ("global", "program")


class Plan:
    """A station with the places of its modules and channels. It never changes."""

    __slots__ = ("_handle", "_row", "__weakref__")

    def __init__(self, handle: Handle) -> None:
        """Of an mxstation_plan without errors; use `Station.plan`."""
        if not isinstance(handle, Handle):
            raise not_from_library(handle)
        self._handle = handle
        self._row: Any = json_of(library.mxstation_plan_json, handle)

    @property
    def name(self) -> str:
        """The name of the station."""
        return str(self._row["station"])

    @property
    def findings(self) -> tuple[Finding, ...]:
        """Warnings and notes on the station and its plan."""
        return findings_of(bytes_of(library.mxstation_plan_findings, self._handle))

    @property
    def input(self) -> ImageBytes:
        """The whole input image."""
        return bytes_of_image(self._row["input"])

    @property
    def output(self) -> ImageBytes:
        """The whole output image."""
        return bytes_of_image(self._row["output"])

    @property
    def modules(self) -> Rows[PlannedModule]:
        """The modules in the order of the row."""
        return Rows([planned_module(one) for one in self._row["modules"]], MODULE_COLUMNS)

    @property
    def gaps(self) -> Rows[Gap]:
        """The bits that belong to no channel: of the input image, then of the output image."""
        rows = [Gap(*(one[name] for name in Gap._fields)) for one in self._row["gaps"]]
        return Rows(rows, Gap._fields)

    @property
    def channels(self) -> StationChannels:
        """The channels of all modules, in the order of the row."""
        return StationChannels(self._handle)

    # One module.

    def module(self, which: int | str) -> Module:
        """Returns the module at a position, from 1, or with a name, at its place in the process
        images. Raises `UnknownName`."""
        return Module(call(library.mxstation_module_at, self._handle, self._position(which)))

    def image(self, which: int | str) -> bytes:
        """Returns the raw parameter image of a module with the values of the station."""
        return bytes_of(library.mxstation_module_image, self._handle, self._position(which))

    def registers(self, which: int | str) -> list[int]:
        """Returns the Modbus registers of that image. Raises `Error` if it has no Modbus form."""
        count = ctypes.c_size_t()
        function = library.mxstation_module_registers
        first = call(function, self._handle, self._position(which), count)
        return list((ctypes.c_uint16 * count.value).from_address(first)) if count else []

    # All of it.

    def text(self) -> str:
        """Returns the row as tables for people, as `mxtool station show` prints it."""
        return text_of(library.mxstation_plan_text, self._handle)

    def json(self) -> str:
        """Returns the row as JSON, schema "mxtool.station"."""
        return text_of(library.mxstation_plan_json, self._handle)

    def svg(self) -> Svg:
        """Returns a picture of both process images."""
        return Svg(text_of(library.mxstation_svg, self._handle))

    def datasheet(self) -> str:
        """Returns the data sheet, a page (HTML) that contains all that it shows."""
        return text_of(library.mxstation_datasheet, self._handle)

    def structured_text(self, *, address: str = "byte", scope: str = "global") -> Declarations:
        """Returns the channels as Structured Text of IEC 61131-3.

        `address` says how addresses count: "byte", "index" (units of their own size) or "separate"
        (each size from 0). `scope` is "global" or "program".
        """
        return self._declared(library.mxstation_declarations, *_style(address, scope))

    def plcopen(self, *, address: str = "byte", scope: str = "global") -> Declarations:
        """Returns the same variables as a project of PLCopen TC6 XML 2.01. Its date is that of the
        environment variable SOURCE_DATE_EPOCH, else 1970-01-01."""
        return self._declared(library.mxstation_plcopen, *_style(address, scope))

    def c_header(self) -> Declarations:
        """Returns a header for C11 and C++17 with functions that read and write the channels."""
        return self._declared(library.mxstation_c_header)

    def parameters_text(self, fieldbus: str = "raw") -> str:
        """Returns the parameter images as a master writes them, and the changed parameters, as
        tables for people. Raises `Error` on "modbus" if an image has no Modbus form."""
        number = fieldbus_argument(fieldbus)
        return text_of(library.mxstation_parameters_text, self._handle, number)

    def parameters_json(self, fieldbus: str = "raw") -> str:
        """Returns the same as JSON, schema "mxtool.station-config"."""
        number = fieldbus_argument(fieldbus)
        return text_of(library.mxstation_parameters_json, self._handle, number)

    def parameter_files(self, fieldbus: str = "raw") -> dict[str, bytes]:
        """Returns files by their names: for each module the bytes that a master writes, in the
        order of the row, and last "station.json", which lists them."""
        number = fieldbus_argument(fieldbus)
        pointer = call(library.mxstation_parameter_files, self._handle, number)
        files = Handle(pointer, library.mxstation_files_free)
        return dict(_file(files, index) for index in range(library.mxstation_files_count(files)))

    def compare(self, other: Plan) -> StationComparison:
        """Returns the differences of `other` from this plan: whether a program bound to its
        addresses still reads the same values from `other`."""
        if not isinstance(other, Plan):
            raise wrong_type("the other plan", other, "Plan")
        return StationComparison(call(library.mxstation_compare, self._handle, other._handle))

    # Its coupler.

    def connect(self, target: str) -> Coupler:
        """Returns the coupler of this station at `target`: "tcp:HOST[:PORT]" or
        "rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]". Sends nothing.

        Raises `Error` for another target, or if the station states no Modbus registers.
        """
        argument = text_argument(target, "target")
        return Coupler(call(online.mxonline_connect, self._handle, argument))

    def simulate(self, listen: str = "tcp:127.0.0.1:0", *, strict: bool = False) -> Simulator:
        """Returns a simulated coupler of this station that listens at `listen`; of port 0 the
        system chooses one. `strict`: registers between the parameters of two modules do not exist,
        otherwise they are 0. That other computers reach it is a `UserWarning`."""
        argument = text_argument(listen, "listen")
        pointer = call(online.mxonline_simulator_start, self._handle, argument, bool(strict))
        simulator = Simulator(pointer)
        for note in findings_of(bytes_of(online.mxonline_listening_notes, argument)):
            warnings.warn(str(note), stacklevel=2)
        return simulator

    def __repr__(self) -> str:
        return f"<Plan {self.name!r} of {len(self._row['modules'])} modules>"

    def to_dataframe(self) -> pandas.DataFrame:
        """Returns a row for each module. Raises `MissingLibrary` without pandas."""
        return self.modules.to_dataframe()

    def _repr_html_(self) -> str:
        return self.modules._repr_html_()

    def _repr_svg_(self) -> str:
        return self.svg()

    def _position(self, which: int | str) -> int:
        if isinstance(which, bool) or not isinstance(which, (int, str)):
            raise wrong_type("a module", which, "int", "str")
        modules = self._row["modules"]
        for one in modules:
            if which in (one["position"], one["name"]):
                return int(one["position"])
        names = tuple(str(one["name"]) for one in modules)
        text = f"Found the module {which!r}, expected a position, 1 to {len(modules)}, or a name"
        raise UnknownName([request_finding(text, place=self.name, accepted=names)])

    def _declared(self, function: Callable[..., Any], *arguments: int) -> Declarations:
        findings = HANDLE()
        text = text_of(function, self._handle, *arguments, ctypes.byref(findings))
        declarations = Declarations(text)
        declarations.findings = findings_of(taken(findings))
        return declarations


def _style(address: str, scope: str) -> tuple[int, int]:
    return (
        choice_argument(address, "address", _STYLES),
        choice_argument(scope, "scope", _SCOPES),
    )


def _file(files: Handle, index: int) -> tuple[str, bytes]:
    size = ctypes.c_size_t()
    first = library.mxstation_files_data(files, index, size)
    name = library.mxstation_files_name(files, index).decode("ascii")
    return name, ctypes.string_at(first, size.value) if size else b""
