#pragma once

/// Marks what libparser-mx exports.
#define PARSER_MX_API __attribute__((visibility("default")))
