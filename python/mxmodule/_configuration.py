"""Configurations: a parameter image and the values in it."""

from __future__ import annotations

from decimal import Decimal
from operator import itemgetter
from typing import TYPE_CHECKING, Any, Iterator, Mapping, NamedTuple, Optional

from ._arguments import FIELDBUSES, separator_argument, text_argument
from ._description import Description
from ._errors import RequestError, wrong_type
from ._findings import Finding, findings_of
from ._handle import Handle
from ._library import bytes_of, call, json_of, text_of
from ._mxmodule import library
from ._parameters import Parameters, number_of, numbers_of
from ._result import Result
from ._rows import Rows, data_frame, html_table

if TYPE_CHECKING:
    import pandas


class Setting(NamedTuple):
    """The value of a parameter in a configuration.

    - `name`: as `Parameter.call_name`.
    - `value`: as people read it: "9.9 V", the text of an option.
    - `digits`: the value as a decimal number, in `unit`; empty: it is outside the image.
    - `unit`: may be empty.
    - `default`: the default as people read it.
    - `is_changed`: it differs from the default.
    - `byte`: first byte in the raw parameter image.
    - `size`: in bytes.
    - `bit_offset`: lowest bit of a bit field.
    - `bit_length`: number of bits of a bit field; 0: whole bytes.
    """

    name: str
    value: str
    digits: str
    unit: str
    default: str
    is_changed: bool
    byte: int
    size: int
    bit_offset: int
    bit_length: int

    @property
    def number(self) -> Decimal | None:
        """The value as a number, in `unit`; None: it is outside the image."""
        return number_of(self.digits)


_LISTINGS = (False, True)  # as mxmodule_listing: all, or only what is changed


def _setting(name: str, values: Any) -> Setting:
    return Setting(
        name,
        values["shown"],
        values["digits"],
        values["unit"],
        values["default_shown"],
        values["changed"],
        values["byte"],
        values["size"],
        values["bit_offset"],
        values["bit_length"],
    )


class Configuration(Mapping[str, Setting]):
    """A parameter image and the values in it, by the names that `Parameters` takes. It never
    changes."""

    __slots__ = ("_description", "_handle", "_fieldbus", "_settings")

    def __init__(self, description: Description, pointer: int, fieldbus: int) -> None:
        """Of the module of `description`. Owns the mxmodule_configuration at `pointer`."""
        self._description = description
        self._handle = Handle(pointer, library.mxmodule_configuration_free)
        self._fieldbus = fieldbus
        self._settings: dict[str, Setting] | None = None

    @property
    def fieldbus(self) -> str:
        """The form of `bytes`: "raw" or "modbus"."""
        return FIELDBUSES[self._fieldbus]

    @property
    def image(self) -> bytes:
        """The raw parameter image."""
        return bytes_of(library.mxmodule_configuration_image, self._handle)

    @property
    def bytes(self) -> bytes:
        """What the fieldbus master writes: the image, or the registers, each with its high byte
        first."""
        return bytes_of(library.mxmodule_configuration_bytes, self._handle)

    @property
    def findings(self) -> tuple[Finding, ...]:
        """Notes: differences in bits of no parameter, parameters without a value or register."""
        return findings_of(bytes_of(library.mxmodule_configuration_findings, self._handle))

    def changed(self) -> dict[str, Setting]:
        """Returns the parameters that differ from the defaults."""
        return {name: one for name, one in self._all().items() if one.is_changed}

    def text(self, *, changed: bool = False) -> str:
        """Returns bytes and parameters as a table for people; `changed`: only those that differ
        from the defaults."""
        return text_of(library.mxmodule_configuration_text, self._handle, bool(changed))

    def json(self, *, changed: bool = False) -> str:
        """Returns the same as JSON, schema "mxtool.config"."""
        return text_of(library.mxmodule_configuration_json, self._handle, bool(changed))

    def csv(
        self, separator: str = ",", *, changed: bool = False, byte_order_mark: bool = False
    ) -> str:
        """Returns the table as CSV. `separator` is a comma, a semicolon or a tab."""
        arguments = (bool(changed), separator_argument(separator), bool(byte_order_mark))
        return text_of(library.mxmodule_configuration_csv, self._handle, *arguments)

    def values_file(self, *, changed: bool = False) -> str:
        """Returns the values as a file (YAML) to be edited, with ranges, options and defaults;
        `Module.compose_file` reads it."""
        return text_of(library.mxmodule_configuration_values, self._handle, bool(changed))

    def compare(self, read: Configuration, place: str = "") -> Comparison:
        """Compares `read` with this configuration, which is wanted. Raises `Error` if the two are
        not of the same module type and fieldbus. `place` is where `read` comes from, for
        messages."""
        if not isinstance(read, Configuration):
            raise wrong_type("the configuration", read, "Configuration")
        argument = text_argument(place, "place")
        return Comparison(call(library.mxmodule_compare, self._handle, read._handle, argument))

    def __getitem__(self, name: str) -> Setting:
        settings = self._all()
        if isinstance(name, str) and name in settings:
            return settings[name]
        return settings[Parameters(self._description)[name].call_name]

    def __contains__(self, name: object) -> bool:
        if not isinstance(name, str):
            return False
        try:
            self[name]
        except (RequestError, KeyError):
            return False
        return True

    def __iter__(self) -> Iterator[str]:
        return iter(self._all())

    def __len__(self) -> int:
        return len(self._all())

    def __eq__(self, other: object) -> bool:
        """Whether both are the same image for modules of one type and one fieldbus; a dict is
        compared with the settings."""
        if isinstance(other, Configuration):
            same = self._fieldbus == other._fieldbus and self.image == other.image
            return same and self._module_type() == other._module_type()
        return super().__eq__(other)

    def __hash__(self) -> int:
        return hash((self._fieldbus, self.image))

    def __repr__(self) -> str:
        return f"<Configuration of {len(self)} parameters, {len(self.changed())} changed>"

    def to_dataframe(self) -> pandas.DataFrame:
        """Returns a row for each parameter, with the members of `Setting`; `number` is a float, in
        the unit. Raises `MissingLibrary` without pandas."""
        settings = list(self._all().values())
        columns: dict[str, Any] = {
            name: [getattr(one, name) for one in settings] for name in Setting._fields
        }
        columns["number"] = numbers_of(columns["digits"])
        return data_frame(columns)

    def _repr_html_(self) -> str:
        return html_table(Setting._fields[:6], [one[:6] for one in self._all().values()])

    def _module_type(self) -> str:
        return str(self._description.device()["device_type_id"])

    def _raw(self) -> Handle:
        # On Modbus a parameter may be in several places or none: the raw image has each once.
        if self._fieldbus == 0:
            return self._handle
        image = self.image
        pointer = call(library.mxmodule_configure, self._description.handle, image, len(image), 0)
        return Handle(pointer, library.mxmodule_configuration_free)

    def _all(self) -> dict[str, Setting]:
        if self._settings is None:
            listed = json_of(library.mxmodule_configuration_json, self._raw(), False)["parameters"]
            by_id = {one["id"]: one for one in listed}
            self._settings = {
                one["call_name"]: _setting(one["call_name"], by_id[one["id"]])
                for one in self._description.device()["parameters"]
                if one["id"] in by_id
            }
        return self._settings


class Deviation(NamedTuple):
    """A parameter whose bits differ.

    - `id`: identifier in the device, decimal.
    - `name`: its name; several parameters may have the same.
    - `channel`: number of its channel; None: it is the module's own.
    - `wanted`: as people read it.
    - `read`: as people read it.
    """

    id: str
    name: str
    channel: Optional[int]
    wanted: str
    read: str


_deviating = itemgetter("id", "name", "channel", "wanted_shown", "read_shown")


class Comparison(Result):
    """The differences of a configuration that was read from the wanted one. It never changes."""

    __slots__ = ()

    def __init__(self, pointer: int) -> None:
        """Owns the mxmodule_comparison at `pointer`."""
        handle = Handle(pointer, library.mxmodule_comparison_free)
        super().__init__(handle, library.mxmodule_comparison_json)

    @property
    def is_same(self) -> bool:
        """Whether no bit differs."""
        return bool(self._values["same"])

    @property
    def deviations(self) -> Rows[Deviation]:
        """The parameters whose bits differ, in order."""
        rows = [Deviation._make(_deviating(one)) for one in self._values["deviations"]]
        return Rows(rows, Deviation._fields)

    @property
    def findings(self) -> tuple[Finding, ...]:
        """A warning about differing bits that belong to no parameter."""
        return findings_of(bytes_of(library.mxmodule_comparison_findings, self._handle))

    def text(self) -> str:
        """Returns the differences as a table for people."""
        return text_of(library.mxmodule_comparison_text, self._handle)

    def csv(self, separator: str = ",", *, byte_order_mark: bool = False) -> str:
        """Returns the same table as CSV. `separator` is a comma, a semicolon or a tab."""
        arguments = (separator_argument(separator), bool(byte_order_mark))
        return text_of(library.mxmodule_comparison_csv, self._handle, *arguments)

    def json(self) -> str:
        """Returns the differences as JSON, schema "mxtool.config-comparison"."""
        return self._json

    def __repr__(self) -> str:
        return f"<Comparison with {len(self._values['deviations'])} deviations>"

    def _repr_html_(self) -> str:
        return self.deviations._repr_html_()
