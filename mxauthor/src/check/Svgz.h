#pragma once

#include "mxauthor/Field.h"

#include <optional>

namespace mxauthor {

/// Returns why `bytes` are not a compressed SVG image (not gzip data, damaged, malformed XML or
/// another root element); nothing if they are one.
[[nodiscard]] std::optional<std::string> svgzProblem(const Bytes& bytes);

} // namespace mxauthor
