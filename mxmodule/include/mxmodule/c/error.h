#pragma once

#include "mxmodule/MxmoduleApi.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Why an operation has no result. The caller frees it. It never changes.
typedef struct mxmodule_error mxmodule_error;

/// What an error is about.
typedef enum mxmodule_code MXMODULE_ANY_INT
{
    MXMODULE_REQUEST = 1,   ///< What the caller asked for, such as a name or a value.
    MXMODULE_INPUT = 2,     ///< What was read: a file, bytes, a text.
    MXMODULE_OUTPUT = 3,    ///< What is written or reached: a file, a database, a coupler.
    MXMODULE_NO_MEMORY = 4, ///< There is no more memory.
    MXMODULE_MISUSE = 5,    ///< A null pointer or a number that the function does not take.
    MXMODULE_DEFECT = 6     ///< A defect of the library.
} mxmodule_code;

/// Returns what `error` is about; 0 for a null pointer.
MXMODULE_API mxmodule_code mxmodule_error_code(const mxmodule_error* error);

/// Returns what is wrong, what was found and what is expected. UTF-8; as long as `error`.
MXMODULE_API const char* mxmodule_error_text(const mxmodule_error* error);

/// Returns the file with line and column or byte offset, or the name of the value that is wrong;
/// may be empty. UTF-8; as long as `error`.
MXMODULE_API const char* mxmodule_error_place(const mxmodule_error* error);

/// Returns what to do; may be empty. UTF-8; as long as `error`.
MXMODULE_API const char* mxmodule_error_hint(const mxmodule_error* error);

/// Returns all that is wrong, with what is accepted instead, as JSON, schema "mxmodule.findings"
/// version 1; the finding of text, place and hint is the last error. As long as `error`.
MXMODULE_API const char* mxmodule_error_findings(const mxmodule_error* error);

/// Frees `error`.
MXMODULE_API void mxmodule_error_free(mxmodule_error* error);

#ifdef __cplusplus
}
#endif
