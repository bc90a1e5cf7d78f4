#pragma once

/// Marks what libmxstation exports.
#define MXSTATION_API __attribute__((visibility("default")))
