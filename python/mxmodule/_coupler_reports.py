"""What was found on a coupler, and what was written to it."""

from __future__ import annotations

from operator import itemgetter
from typing import Any, NamedTuple, Sequence, Union

from ._arguments import choice_argument
from ._errors import OutputError
from ._findings import Finding, finding_of, findings_of, for_terminal
from ._handle import Handle
from ._library import bytes_of, text_of
from ._mxonline import library
from ._result import Result
from ._rows import Rows


class DifferingParameter(NamedTuple):
    """A parameter whose registers differ from those of the station.

    - `module`: name of the module.
    - `name`: by which a station states it.
    - `address`: its first register.
    - `found`: the value on the coupler, as people read it.
    - `planned`: the value of the station.
    """

    module: str
    name: str
    address: int
    found: str
    planned: str


class AppliedParameter(NamedTuple):
    """A parameter that differed from the station before or after.

    - `module`: name of the module.
    - `name`: by which a station states it.
    - `address`: its first register.
    - `before`: the value before, as people read it; empty: it was as planned.
    - `planned`: the value of the station.
    - `now`: read back; empty: not read back.
    - `written`: the coupler confirmed that it was written.
    - `outcome`: "verified", "different" or "not read back".
    """

    module: str
    name: str
    address: int
    before: str
    planned: str
    now: str
    written: bool
    outcome: str


_differing = itemgetter(*DifferingParameter._fields[1:])
_applied = itemgetter("name", "address", "before", "planned", "now", "written", "outcome")


class CouplerDifference(Result):
    """How the parameters on a coupler differ from those of a station. It never changes."""

    __slots__ = ()

    def __init__(self, pointer: int) -> None:
        """Owns the mxonline_difference at `pointer`; use `Coupler.difference`."""
        handle = Handle(pointer, library.mxonline_difference_free)
        super().__init__(handle, library.mxonline_difference_json)

    @property
    def is_same(self) -> bool:
        """Whether every parameter was read and is as the station states."""
        return bool(self._values["same"])

    @property
    def findings(self) -> tuple[Finding, ...]:
        """An error for each module that is not that of the station."""
        return findings_of(bytes_of(library.mxonline_difference_findings, self._handle))

    @property
    def parameters(self) -> Rows[DifferingParameter]:
        """The parameters that differ, in the order of the row and of the registers."""
        rows = [
            DifferingParameter._make((module["name"], *_differing(one)))
            for module in self._values["modules"]
            for one in module["parameters"]
        ]
        return Rows(rows, DifferingParameter._fields)

    def question(self) -> str:
        """Returns the question to a person whether `Coupler.apply` may write."""
        return text_of(library.mxonline_difference_question, self._handle)

    def text(self, use: str = "plan") -> str:
        """Returns tables for people. `use` is "plan" (what `Coupler.apply` would do), "apply" or
        "verify"."""
        number = choice_argument(use, "use", ("plan", "apply", "verify"))
        return text_of(library.mxonline_difference_text, self._handle, number)

    def json(self) -> str:
        """Returns all of it as JSON, schema "mxtool.coupler-difference"."""
        return self._json

    def __repr__(self) -> str:
        return f"<CouplerDifference of {len(self.parameters)} parameters>"

    def _repr_html_(self) -> str:
        return self.parameters._repr_html_()


class ApplyReport(Result):
    """What was written to a coupler, and what is there now. It never changes."""

    __slots__ = ()

    def __init__(self, pointer: int) -> None:
        """Owns the mxonline_report at `pointer`; use `Coupler.apply`."""
        handle = Handle(pointer, library.mxonline_report_free)
        super().__init__(handle, library.mxonline_report_json)

    @property
    def is_done(self) -> bool:
        """Whether everything was read back and is as the station states."""
        return bool(self._values["done"])

    @property
    def verdict(self) -> str:
        """The same as a sentence: "Done: ..." or "NOT DONE: ..."."""
        return str(self._values["verdict"])

    @property
    def findings(self) -> tuple[Finding, ...]:
        """Faults, and parameters that are not as planned."""
        return findings_of(bytes_of(library.mxonline_report_findings, self._handle))

    @property
    def parameters(self) -> Rows[AppliedParameter]:
        """The parameters that differed before or do now."""
        rows = [
            AppliedParameter._make((module["name"], *_applied(one)))
            for module in self._values["modules"]
            for one in module["parameters"]
        ]
        return Rows(rows, AppliedParameter._fields)

    def text(self) -> str:
        """Returns it for people."""
        return text_of(library.mxonline_report_text, self._handle)

    def json(self) -> str:
        """Returns it as JSON, schema "mxtool.apply-report"."""
        return self._json

    def html(self) -> str:
        """Returns it as a page (HTML) that contains all that it shows."""
        return text_of(library.mxonline_report_html, self._handle)

    def __repr__(self) -> str:
        return f"<ApplyReport {for_terminal(self.verdict)}>"

    def _repr_html_(self) -> str:
        return self.parameters._repr_html_()


class SetOutput(NamedTuple):
    """An output channel and its values: numbers, of more than 64 bits bytes in hexadecimal.

    - `name`: alias, MODULE/CHANNEL or MODULE/#ID.
    - `symbol`: IEC address such as "QX0_0".
    - `before`: on the coupler before it was set.
    - `wanted`: what it is to be.
    - `now`: read back; None: what the coupler has is not known.
    """

    name: str
    symbol: str
    before: Union[int, str]
    wanted: Union[int, str]
    now: Union[int, str, None]


_output = itemgetter(*SetOutput._fields)


class OutputReport(Rows[SetOutput]):
    """What became of outputs, in the order of the values."""

    __slots__ = ("is_done", "findings")

    #: Whether every output was read back as wanted; None: nothing was to be written.
    is_done: bool | None
    #: Faults; values that are not as wanted.
    findings: tuple[Finding, ...]

    def __init__(self, values: Any) -> None:
        """Of an object of the schema "mxonline.outputs"."""
        rows = [SetOutput._make(_output(one)) for one in values["outputs"]]
        super().__init__(rows, SetOutput._fields)
        self.is_done = values["done"]
        self.findings = tuple(finding_of(one) for one in values["findings"])


class NotDone(OutputError):
    """Something was written to a coupler, and not everything is known to be as wanted. `report` has
    what is known."""

    report: ApplyReport | OutputReport

    def __init__(
        self, findings: Sequence[Finding], report: ApplyReport | OutputReport, verdict: str
    ) -> None:
        """`verdict` is a sentence for people."""
        last = Finding("error", "output", "", verdict, "", (), "")
        super().__init__([*findings, last])
        self._verdict = verdict
        self.report = report

    # A process pool that cannot read an exception of a worker waits for it for ever.
    def __reduce__(self) -> Any:
        return type(self), (self.findings[:-1], self.report, self._verdict)
