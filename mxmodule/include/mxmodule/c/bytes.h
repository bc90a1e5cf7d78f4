#pragma once

#include "mxmodule/MxmoduleApi.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Bytes or a text that a function returned. The caller frees it. It never changes.
typedef struct mxmodule_bytes mxmodule_bytes;

/// Returns the first byte; a NUL byte that does not count follows the last. As long as `bytes`.
MXMODULE_API const char* mxmodule_bytes_data(const mxmodule_bytes* bytes);

/// Returns the number of bytes.
MXMODULE_API size_t mxmodule_bytes_size(const mxmodule_bytes* bytes);

/// Frees `bytes`.
MXMODULE_API void mxmodule_bytes_free(mxmodule_bytes* bytes);

#ifdef __cplusplus
}
#endif
