#pragma once

/// Marks what libmxonline exports.
#define MXONLINE_API __attribute__((visibility("default")))
