"""The functions of <mxmodule/mxmodule.h>."""

from __future__ import annotations

import ctypes

from ._library import (
    BYTES,
    CHAR,
    HANDLE,
    HANDLES,
    INT,
    INTS,
    NOTHING,
    SIZE,
    SIZES,
    TEXT,
    TEXTS,
    UINT32,
    Library,
    Signature,
)


class Assignment(ctypes.Structure):
    """`mxmodule_assignment`."""

    _fields_ = [("name", TEXT), ("value", TEXT)]


class Search(ctypes.Structure):
    """`mxmodule_search`."""

    _fields_ = [
        ("words", TEXT),
        ("conditions", TEXTS),
        ("count", SIZE),
        ("limit", SIZE),
        ("after", TEXT),
        ("family", TEXT),
    ]


NOTICE = ctypes.CFUNCTYPE(INT, HANDLE, TEXT)
PROGRESS = ctypes.CFUNCTYPE(INT, HANDLE, SIZE, SIZE)


class Observer(ctypes.Structure):
    """`mxmodule_observer`."""

    _fields_ = [("context", HANDLE), ("notice", NOTICE), ("progress", PROGRESS)]


_ASSIGNMENTS = ctypes.POINTER(Assignment)
_OBSERVER = ctypes.POINTER(Observer)
_SEARCH = ctypes.POINTER(Search)

# Each also takes a place for the error, last.
_FAILING: dict[str, Signature] = {
    "mxmodule_load": (HANDLE, [TEXT, UINT32, UINT32]),
    "mxmodule_from_bytes": (HANDLE, [BYTES, SIZE, TEXT, UINT32, UINT32]),
    "mxmodule_at": (HANDLE, [HANDLE, UINT32, UINT32]),
    "mxmodule_name": (HANDLE, [HANDLE]),
    "mxmodule_label": (HANDLE, [HANDLE]),
    "mxmodule_module_id": (HANDLE, [HANDLE]),
    "mxmodule_json": (HANDLE, [HANDLE]),
    "mxmodule_text": (HANDLE, [HANDLE]),
    "mxmodule_raw_texts": (HANDLE, [HANDLE]),
    "mxmodule_datasheet": (HANDLE, [HANDLE]),
    "mxmodule_product_picture": (HANDLE, [HANDLE]),
    "mxmodule_default_image": (HANDLE, [HANDLE]),
    "mxmodule_parameter_called": (INT, [HANDLE, TEXT, SIZES]),
    "mxmodule_channels_json": (HANDLE, [HANDLE]),
    "mxmodule_channels_text": (HANDLE, [HANDLE]),
    "mxmodule_channels_csv": (HANDLE, [HANDLE, CHAR, INT]),
    "mxmodule_channels_declarations": (HANDLE, [HANDLE]),
    "mxmodule_channels_svg": (HANDLE, [HANDLE]),
    "mxmodule_channels_drawing": (HANDLE, [HANDLE, INT]),
    "mxmodule_compose": (HANDLE, [HANDLE, _ASSIGNMENTS, SIZE, BYTES, SIZE, INT]),
    "mxmodule_compose_file": (HANDLE, [HANDLE, BYTES, SIZE, TEXT, INT]),
    "mxmodule_decode": (HANDLE, [HANDLE, BYTES, SIZE, INT, TEXT]),
    "mxmodule_configure": (HANDLE, [HANDLE, BYTES, SIZE, INT]),
    "mxmodule_configuration_image": (HANDLE, [HANDLE]),
    "mxmodule_configuration_bytes": (HANDLE, [HANDLE]),
    "mxmodule_configuration_json": (HANDLE, [HANDLE, INT]),
    "mxmodule_configuration_text": (HANDLE, [HANDLE, INT]),
    "mxmodule_configuration_csv": (HANDLE, [HANDLE, INT, CHAR, INT]),
    "mxmodule_configuration_values": (HANDLE, [HANDLE, INT]),
    "mxmodule_configuration_findings": (HANDLE, [HANDLE]),
    "mxmodule_compare": (HANDLE, [HANDLE, HANDLE, TEXT]),
    "mxmodule_comparison_json": (HANDLE, [HANDLE]),
    "mxmodule_comparison_text": (HANDLE, [HANDLE]),
    "mxmodule_comparison_csv": (HANDLE, [HANDLE, CHAR, INT]),
    "mxmodule_comparison_findings": (HANDLE, [HANDLE]),
    "mxmodule_catalogue_open": (HANDLE, [TEXT, INT]),
    "mxmodule_catalogue_name": (HANDLE, [HANDLE]),
    "mxmodule_catalogue_search_page": (HANDLE, [HANDLE, _SEARCH, INTS]),
    "mxmodule_catalogue_explain_json": (HANDLE, [HANDLE, _SEARCH]),
    "mxmodule_catalogue_explain_text": (HANDLE, [HANDLE, _SEARCH]),
    "mxmodule_catalogue_search_findings": (HANDLE, [HANDLE, TEXT, TEXTS, SIZE]),
    "mxmodule_catalogue_find": (HANDLE, [HANDLE, TEXT]),
    "mxmodule_catalogue_file": (HANDLE, [HANDLE, TEXT]),
    "mxmodule_catalogue_module": (HANDLE, [HANDLE, TEXT, UINT32, UINT32]),
    "mxmodule_catalogue_remove": (INT, [HANDLE, TEXT]),
    "mxmodule_catalogue_populate": (HANDLE, [HANDLE, TEXT, INT, _OBSERVER]),
    "mxmodule_columns_of": (HANDLE, [HANDLES, SIZE]),
    "mxmodule_check": (HANDLE, [TEXTS, SIZE]),
    "mxmodule_check_sarif": (HANDLE, [TEXTS, SIZE]),
    "mxmodule_check_rules": (HANDLE, []),
}
_PLAIN: dict[str, Signature] = {
    "mxmodule_free": (NOTHING, [HANDLE]),
    "mxmodule_composition_free": (NOTHING, [HANDLE]),
    "mxmodule_composition_image": (HANDLE, [HANDLE, SIZES]),
    "mxmodule_composition_registers": (HANDLE, [HANDLE, SIZES]),
    "mxmodule_composition_no_registers": (TEXT, [HANDLE]),
    "mxmodule_composition_findings": (TEXT, [HANDLE]),
    "mxmodule_configuration_free": (NOTHING, [HANDLE]),
    "mxmodule_comparison_free": (NOTHING, [HANDLE]),
    "mxmodule_catalogue_free": (NOTHING, [HANDLE]),
    "mxmodule_columns_free": (NOTHING, [HANDLE]),
    "mxmodule_columns_rows": (SIZE, [HANDLE]),
    "mxmodule_columns_numbers": (HANDLE, [HANDLE, INT]),
    "mxmodule_columns_texts": (TEXT, [HANDLE, INT]),
    "mxmodule_version": (TEXT, []),
}

#: libmxmodule.
library = Library("libmxmodule.so.1", _FAILING, _PLAIN)
