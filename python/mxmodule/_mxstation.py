"""The functions of <mxstation/mxstation.h>."""

from __future__ import annotations

from ._library import (
    BYTES,
    CHAR,
    HANDLE,
    HANDLES,
    INT,
    NOTHING,
    SIZE,
    SIZES,
    TEXT,
    Library,
    Signature,
)

# Each also takes a place for the error, last.
_FAILING: dict[str, Signature] = {
    "mxstation_load": (HANDLE, [TEXT, TEXT]),
    "mxstation_from_text": (HANDLE, [BYTES, SIZE, TEXT, TEXT]),
    "mxstation_name": (HANDLE, [HANDLE]),
    "mxstation_source": (HANDLE, [HANDLE]),
    "mxstation_findings": (HANDLE, [HANDLE]),
    "mxstation_pinned": (HANDLE, [HANDLE]),
    "mxstation_plan_of": (HANDLE, [HANDLE]),
    "mxstation_plan_findings": (HANDLE, [HANDLE]),
    "mxstation_check_json": (HANDLE, [HANDLE]),
    "mxstation_plan_json": (HANDLE, [HANDLE]),
    "mxstation_plan_text": (HANDLE, [HANDLE]),
    "mxstation_module_at": (HANDLE, [HANDLE, SIZE]),
    "mxstation_module_image": (HANDLE, [HANDLE, SIZE]),
    "mxstation_module_registers": (HANDLE, [HANDLE, SIZE, SIZES]),
    "mxstation_channels_json": (HANDLE, [HANDLE]),
    "mxstation_channels_text": (HANDLE, [HANDLE]),
    "mxstation_channels_csv": (HANDLE, [HANDLE, CHAR, INT]),
    "mxstation_declarations": (HANDLE, [HANDLE, INT, INT, HANDLES]),
    "mxstation_plcopen": (HANDLE, [HANDLE, INT, INT, HANDLES]),
    "mxstation_c_header": (HANDLE, [HANDLE, HANDLES]),
    "mxstation_svg": (HANDLE, [HANDLE]),
    "mxstation_datasheet": (HANDLE, [HANDLE]),
    "mxstation_parameters_json": (HANDLE, [HANDLE, INT]),
    "mxstation_parameters_text": (HANDLE, [HANDLE, INT]),
    "mxstation_parameter_files": (HANDLE, [HANDLE, INT]),
    "mxstation_compare": (HANDLE, [HANDLE, HANDLE]),
    "mxstation_comparison_json": (HANDLE, [HANDLE]),
    "mxstation_comparison_text": (HANDLE, [HANDLE]),
}
_PLAIN: dict[str, Signature] = {
    "mxstation_free": (NOTHING, [HANDLE]),
    "mxstation_plan_free": (NOTHING, [HANDLE]),
    "mxstation_plan_ok": (INT, [HANDLE]),
    "mxstation_files_free": (NOTHING, [HANDLE]),
    "mxstation_files_count": (SIZE, [HANDLE]),
    "mxstation_files_name": (TEXT, [HANDLE, SIZE]),
    "mxstation_files_data": (HANDLE, [HANDLE, SIZE, SIZES]),
    "mxstation_comparison_free": (NOTHING, [HANDLE]),
}

#: libmxstation.
library = Library("libmxstation.so.1", _FAILING, _PLAIN)
