#pragma once

/// Marks what libmxmodule exports.
#define MXMODULE_API __attribute__((visibility("default")))
