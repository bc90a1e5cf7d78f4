"""Modules of the kv38 family: what their mx files describe, values into the parameter images that a
fieldbus master writes and back, channels in the process images, catalogues
of modules, stations and their couplers.

    module = mxmodule.Module.load("MX0304.bin")
    image = module.compose({"AI 1/Upper limit": "9.5 V"})

Objects own all that they need: none has to be kept for another one. What fails raises an `Error`
with what is wrong, where, and what is accepted instead.
"""

from __future__ import annotations

from ._catalogue import Catalogue, Population
from ._channels import (
    BitRun,
    Channel,
    Channels,
    ChannelWithoutSymbol,
    ImageArea,
)
from ._channels_dataframe import channels_dataframe
from ._check import CheckFinding, CheckRule, check, check_rules, check_sarif
from ._configuration import Comparison, Configuration, Deviation, Setting
from ._coupler import Coupler, Outputs, Sample, Traffic
from ._coupler_reports import (
    AppliedParameter,
    ApplyReport,
    CouplerDifference,
    DifferingParameter,
    NotDone,
    OutputReport,
    SetOutput,
)
from ._errors import (
    ClosedError,
    Defect,
    Error,
    InputError,
    MissingLibrary,
    OutputError,
    RequestError,
    SideEffectWarning,
    UnknownName,
    WrongType,
)
from ._findings import Finding
from ._module import Module
from ._mxmodule import library as _library
from ._parameters import Parameter, Parameters
from ._plan import Plan
from ._planned import Declarations, Gap, ImageBytes, PlannedModule
from ._rows import Rows, Svg
from ._search import CatalogueEntry, SearchExplanation
from ._simulator import Simulator, SimulatorCounts
from ._station import Station
from ._station_channels import StationChannel, StationChannels, StationChannelWithoutSymbol
from ._station_comparison import StationChange, StationComparison
from ._values import BinaryObject, Option, Place, Property, Set

#: The version of the libraries.
__version__: str = _library.mxmodule_version().decode("ascii")

__all__ = [
    "AppliedParameter",
    "ApplyReport",
    "BinaryObject",
    "BitRun",
    "Catalogue",
    "CatalogueEntry",
    "Channel",
    "ChannelWithoutSymbol",
    "Channels",
    "CheckFinding",
    "CheckRule",
    "ClosedError",
    "Comparison",
    "Configuration",
    "Coupler",
    "CouplerDifference",
    "Declarations",
    "Defect",
    "Deviation",
    "DifferingParameter",
    "Error",
    "Finding",
    "Gap",
    "ImageArea",
    "ImageBytes",
    "InputError",
    "MissingLibrary",
    "Module",
    "NotDone",
    "Option",
    "OutputError",
    "OutputReport",
    "Outputs",
    "Parameter",
    "Parameters",
    "Place",
    "Plan",
    "PlannedModule",
    "Population",
    "Property",
    "RequestError",
    "Rows",
    "Sample",
    "SearchExplanation",
    "Set",
    "SetOutput",
    "Setting",
    "SideEffectWarning",
    "Simulator",
    "SimulatorCounts",
    "Station",
    "StationChange",
    "StationChannel",
    "StationChannelWithoutSymbol",
    "StationChannels",
    "StationComparison",
    "Svg",
    "Traffic",
    "UnknownName",
    "WrongType",
    "channels_dataframe",
    "check",
    "check_rules",
    "check_sarif",
]



def __dir__() -> list[str]:
    return [*__all__, "__version__", "__doc__", "__file__", "__path__"]


# In messages and documents a name is that by which it is imported.
for _name in __all__:
    globals()[_name].__module__ = __name__
