#pragma once

#include "mxmodule/MxmoduleApi.h"
#include "mxmodule/c/error.h"
#include "mxmodule/c/module.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The channels of many modules, column by column: for tables, which JSON would make slow. The
/// caller frees it. It never changes.
typedef struct mxmodule_columns mxmodule_columns;

/// A column of numbers.
typedef enum mxmodule_number_column MXMODULE_ANY_INT
{
    MXMODULE_COLUMN_MODULE = 0,     ///< Position of the module in the list of modules, from 0.
    MXMODULE_COLUMN_NUMBER = 1,     ///< Number of the channel; several may have the same.
    MXMODULE_COLUMN_AREA = 2,       ///< 'I' or 'Q', in ASCII.
    MXMODULE_COLUMN_KIND = 3,       ///< Size letter 'X', 'B', 'W', 'D' or 'L', in ASCII.
    MXMODULE_COLUMN_BYTE = 4,       ///< First byte in the image.
    MXMODULE_COLUMN_BIT_OFFSET = 5, ///< As in the mx file; may be above 7.
    MXMODULE_COLUMN_BIT_LENGTH = 6, ///< In bits.
    MXMODULE_COLUMN_MASK = 7        ///< 2 to the power of the length, minus 1, at most 255.
} mxmodule_number_column;

/// A column of texts.
typedef enum mxmodule_text_column MXMODULE_ANY_INT
{
    MXMODULE_COLUMN_ID = 0,        ///< Identifier of the channel in the device, decimal.
    MXMODULE_COLUMN_NAME = 1,      ///< Name of the channel; may be empty.
    MXMODULE_COLUMN_SYMBOL = 2,    ///< IEC address such as "IW4".
    MXMODULE_COLUMN_MODULE_ID = 3, ///< Of each module of the list: its identifier.
    MXMODULE_COLUMN_LABEL = 4      ///< Of each module of the list: its label.
} mxmodule_text_column;

/// Returns the channels of the `count` modules at `modules` that have a place in a process image.
MXMODULE_API mxmodule_columns* mxmodule_columns_of(const mxmodule_module* const* modules,
                                                   size_t count, mxmodule_error** error);

/// Frees `columns`.
MXMODULE_API void mxmodule_columns_free(mxmodule_columns* columns);

/// Returns the number of channels.
MXMODULE_API size_t mxmodule_columns_rows(const mxmodule_columns* columns);

/// Returns the numbers of a column, one for each channel, in the byte order of the computer; a null
/// pointer if there is no such column. As long as `columns`.
MXMODULE_API const uint32_t* mxmodule_columns_numbers(const mxmodule_columns* columns,
                                                      mxmodule_number_column column);

/// Returns the texts of a column as a JSON array, one for each channel, or for each module of the
/// list where the column says so; a null pointer if there is no such column. As long as `columns`.
MXMODULE_API const char* mxmodule_columns_texts(const mxmodule_columns* columns,
                                                mxmodule_text_column column);

#ifdef __cplusplus
}
#endif
