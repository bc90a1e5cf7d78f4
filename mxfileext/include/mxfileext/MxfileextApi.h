#pragma once

/// Marks what libmxfileext exports.
#define MXFILEEXT_API __attribute__((visibility("default")))
