#pragma once

/// Marks what libmxmodule exports.
#define MXMODULE_API __attribute__((visibility("default")))

/// Lets an enumeration of the C interface contain every number that C may pass: without it, C++
/// could not check a wrong one.
#ifdef __cplusplus
#define MXMODULE_ANY_INT : int
#else
#define MXMODULE_ANY_INT
#endif
