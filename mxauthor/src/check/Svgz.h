#pragma once

#include "mxauthor/Field.h"

#include <optional>

namespace mxauthor {

/// Returns why `bytes` are no compressed SVG image: no gzip data, damaged, no well-formed XML or of
/// another root element; nothing when they are one.
[[nodiscard]] std::optional<std::string> svgzProblem(const Bytes& bytes);

} // namespace mxauthor
