#pragma once

#include "mxstation/MxstationApi.h"
#include "mxstation/c/plan.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>

#ifdef __cplusplus
extern "C" {
#endif

/// A comparison of two stations. The caller frees it. It never changes.
typedef struct mxstation_comparison mxstation_comparison;

/// Compares station `b` with station `a`. Modules of the same name are compared; those without a
/// name of their own with those of the same type in their order.
MXSTATION_API mxstation_comparison*
mxstation_compare(const mxstation_plan* a, const mxstation_plan* b, mxmodule_error** error);

/// Frees `comparison`.
MXSTATION_API void mxstation_comparison_free(mxstation_comparison* comparison);

/// Returns 1 if there is no difference, otherwise 0, also for a null pointer.
MXSTATION_API int mxstation_comparison_is_same(const mxstation_comparison* comparison);

/// Returns 1 if a program bound to the addresses of `a` reads the same values from `b`, otherwise
/// 0, also for a null pointer.
MXSTATION_API int mxstation_comparison_same_values(const mxstation_comparison* comparison);

/// Returns the differences as JSON, schema "mxtool.station-diff" version 1.
MXSTATION_API mxmodule_bytes* mxstation_comparison_json(const mxstation_comparison* comparison,
                                                        mxmodule_error** error);

/// Returns the differences for people, with the verdict.
MXSTATION_API mxmodule_bytes* mxstation_comparison_text(const mxstation_comparison* comparison,
                                                        mxmodule_error** error);

#ifdef __cplusplus
}
#endif
