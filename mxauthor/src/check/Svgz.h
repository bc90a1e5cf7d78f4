#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Returns why `bytes` are no compressed SVG image: no gzip data, damaged, no well-formed XML or of
/// another root element. Empty when they are one.
std::string svgzProblem(const Bytes& bytes);

} // namespace mxauthor
