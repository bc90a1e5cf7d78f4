#pragma once

#include "mxstation/MxstationApi.h"
#include "mxstation/c/plan.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/configuration.h>
#include <mxmodule/c/error.h>

#include <stddef.h>

// What is made of a plan. Each result is the same, byte for byte, for the same plan.

#ifdef __cplusplus
extern "C" {
#endif

/// Returns all channels as JSON, schema "mxtool.station-channels" version 1.
MXSTATION_API mxmodule_bytes* mxstation_channels_json(const mxstation_plan* plan,
                                                      mxmodule_error** error);

/// Returns the same as a table for people.
MXSTATION_API mxmodule_bytes* mxstation_channels_text(const mxstation_plan* plan,
                                                      mxmodule_error** error);

/// Returns the same as CSV. `separator` is ',', ';' or a tab; `byte_order_mark`: begin with one.
MXSTATION_API mxmodule_bytes* mxstation_channels_csv(const mxstation_plan* plan, char separator,
                                                     int byte_order_mark, mxmodule_error** error);

/// How the number of an IEC address counts: of the channels IX0_0, IW2, IW4 and ID6.
typedef enum mxstation_address_style MXMODULE_ANY_INT
{
    MXSTATION_BYTE = 0,    ///< Bytes, whatever the size: %IX0.0, %IW2, %IW4, %ID6.
    MXSTATION_INDEX = 1,   ///< Units of its own size: %IX0.0, %IW1, %IW2; ID6 has no such number.
    MXSTATION_SEPARATE = 2 ///< Each size in each image from 0: %IX0.0, %IW0, %IW1, %ID0.
} mxstation_address_style;

/// Where variables are declared.
typedef enum mxstation_variable_scope MXMODULE_ANY_INT
{
    MXSTATION_GLOBAL = 0, ///< For all programs.
    MXSTATION_PROGRAM = 1 ///< In a program called as the station.
} mxstation_variable_scope;

/// Returns the channels as Structured Text of IEC 61131-3.
///
/// Stores in `findings`, which may be null, a warning for each channel, or bit of one, that is only
/// a comment, as JSON, schema "mxmodule.findings" version 1. The caller frees it; it is null after
/// a failure.
MXSTATION_API mxmodule_bytes* mxstation_declarations(const mxstation_plan* plan,
                                                     mxstation_address_style address,
                                                     mxstation_variable_scope scope,
                                                     mxmodule_bytes** findings,
                                                     mxmodule_error** error);

/// Returns the same variables as a project of PLCopen TC6 XML 2.01; its date is that of the
/// environment variable SOURCE_DATE_EPOCH (seconds since 1970), otherwise 1970-01-01.
MXSTATION_API mxmodule_bytes* mxstation_plcopen(const mxstation_plan* plan,
                                                mxstation_address_style address,
                                                mxstation_variable_scope scope,
                                                mxmodule_bytes** findings, mxmodule_error** error);

/// Returns a header for C11 and C++17 with the places of the channels, and functions that read and
/// write them. `findings` as above.
MXSTATION_API mxmodule_bytes* mxstation_c_header(const mxstation_plan* plan,
                                                 mxmodule_bytes** findings, mxmodule_error** error);

/// Returns a picture of both process images, an SVG document.
MXSTATION_API mxmodule_bytes* mxstation_svg(const mxstation_plan* plan, mxmodule_error** error);

/// Returns the data sheet, a page (HTML) that contains all that it shows.
MXSTATION_API mxmodule_bytes* mxstation_datasheet(const mxstation_plan* plan,
                                                  mxmodule_error** error);

/// Returns the parameter images as a master writes them on `fieldbus`, and the parameters that
/// differ from the defaults, as JSON, schema "mxtool.station-config" version 1. For Modbus an image
/// without a Modbus form is an error.
MXSTATION_API mxmodule_bytes* mxstation_parameters_json(const mxstation_plan* plan,
                                                        mxmodule_fieldbus fieldbus,
                                                        mxmodule_error** error);

/// Returns the same as tables for people.
MXSTATION_API mxmodule_bytes* mxstation_parameters_text(const mxstation_plan* plan,
                                                        mxmodule_fieldbus fieldbus,
                                                        mxmodule_error** error);

/// Files of parameters. The caller frees it. It never changes.
typedef struct mxstation_files mxstation_files;

/// Returns a file for each module with the bytes that a master writes, in the order of the row, and
/// last "station.json", the JSON of `mxstation_parameters_json` with the names of the files.
MXSTATION_API mxstation_files* mxstation_parameter_files(const mxstation_plan* plan,
                                                         mxmodule_fieldbus fieldbus,
                                                         mxmodule_error** error);

/// Frees `files`.
MXSTATION_API void mxstation_files_free(mxstation_files* files);

/// Returns the number of files.
MXSTATION_API size_t mxstation_files_count(const mxstation_files* files);

/// Returns the name of file number `index`, from 0: without a directory, of letters, digits, "-",
/// "_", "%" and "."; a null pointer if there is none. As long as `files`.
MXSTATION_API const char* mxstation_files_name(const mxstation_files* files, size_t index);

/// Returns the content of that file and stores its number of bytes in `size`; a null pointer if
/// there is no such file. As long as `files`.
MXSTATION_API const unsigned char* mxstation_files_data(const mxstation_files* files, size_t index,
                                                        size_t* size);

#ifdef __cplusplus
}
#endif
