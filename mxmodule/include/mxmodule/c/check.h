#pragma once

#include "mxmodule/MxmoduleApi.h"
#include "mxmodule/c/bytes.h"
#include "mxmodule/c/error.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Returns every violation of a rule in the `count` files, mx files or their text forms, at `paths`
/// as JSON, schema "mxtool.check" version 2. A file that cannot be read is an error.
MXMODULE_API mxmodule_bytes* mxmodule_check(const char* const* paths, size_t count,
                                            mxmodule_error** error);

/// Returns the same as SARIF 2.1.0.
MXMODULE_API mxmodule_bytes* mxmodule_check_sarif(const char* const* paths, size_t count,
                                                  mxmodule_error** error);

/// Returns all rules as JSON, schema "mxtool.check-rules" version 1.
MXMODULE_API mxmodule_bytes* mxmodule_check_rules(mxmodule_error** error);

/// Returns the version of the library, "1.0.0". Lives as long as the process.
MXMODULE_API const char* mxmodule_version(void);

#ifdef __cplusplus
}
#endif
