#pragma once

/// Marks what libparser-mx exports.
#define PARSER_MX_API __attribute__((visibility("default")))

/// Marks what an exported class keeps to itself.
#define PARSER_MX_LOCAL __attribute__((visibility("hidden")))
