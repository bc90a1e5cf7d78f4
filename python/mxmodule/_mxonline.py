"""The functions of <mxonline/mxonline.h>."""

from __future__ import annotations

import ctypes

from ._library import HANDLE, INT, NOTHING, SIZE, TEXT, TEXTS, Library, Signature


class OutputValue(ctypes.Structure):
    """`mxonline_output_value`."""

    _fields_ = [("channel", TEXT), ("value", TEXT)]


_OUTPUT_VALUES = ctypes.POINTER(OutputValue)

# Each also takes a place for the error, last.
_FAILING: dict[str, Signature] = {
    "mxonline_connect": (HANDLE, [HANDLE, TEXT]),
    "mxonline_coupler_target": (HANDLE, [HANDLE]),
    "mxonline_coupler_traffic": (HANDLE, [HANDLE]),
    "mxonline_read_station": (HANDLE, [HANDLE]),
    "mxonline_difference_of": (HANDLE, [HANDLE]),
    "mxonline_difference_json": (HANDLE, [HANDLE]),
    "mxonline_difference_text": (HANDLE, [HANDLE, INT]),
    "mxonline_difference_question": (HANDLE, [HANDLE]),
    "mxonline_difference_findings": (HANDLE, [HANDLE]),
    "mxonline_apply": (HANDLE, [HANDLE, HANDLE]),
    "mxonline_report_json": (HANDLE, [HANDLE]),
    "mxonline_report_text": (HANDLE, [HANDLE]),
    "mxonline_report_html": (HANDLE, [HANDLE]),
    "mxonline_report_findings": (HANDLE, [HANDLE]),
    "mxonline_watch_of": (HANDLE, [HANDLE, TEXTS, SIZE]),
    "mxonline_watch_channels": (HANDLE, [HANDLE]),
    "mxonline_watch_sample": (HANDLE, [HANDLE]),
    "mxonline_outputs_of": (HANDLE, [HANDLE, _OUTPUT_VALUES, SIZE]),
    "mxonline_outputs_read": (HANDLE, [HANDLE]),
    "mxonline_outputs_write": (HANDLE, [HANDLE]),
    "mxonline_outputs_restore": (HANDLE, [HANDLE]),
    "mxonline_simulator_start": (HANDLE, [HANDLE, TEXT, INT]),
    "mxonline_simulator_address": (HANDLE, [HANDLE]),
    "mxonline_listening_notes": (HANDLE, [TEXT]),
    "mxonline_simulator_value": (HANDLE, [HANDLE, TEXT]),
    "mxonline_simulator_set_input": (INT, [HANDLE, TEXT, TEXT]),
    "mxonline_simulator_set_output": (INT, [HANDLE, TEXT, TEXT]),
    "mxonline_simulator_counts": (HANDLE, [HANDLE]),
}
_PLAIN: dict[str, Signature] = {
    "mxonline_coupler_free": (NOTHING, [HANDLE]),
    "mxonline_difference_free": (NOTHING, [HANDLE]),
    "mxonline_report_free": (NOTHING, [HANDLE]),
    "mxonline_watch_free": (NOTHING, [HANDLE]),
    "mxonline_outputs_free": (NOTHING, [HANDLE]),
    "mxonline_simulator_stop": (NOTHING, [HANDLE]),
    "mxonline_simulator_free": (NOTHING, [HANDLE]),
}

#: libmxonline.
library = Library("libmxonline.so.1", _FAILING, _PLAIN)
