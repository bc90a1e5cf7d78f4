#pragma once

#include "mxauthor/Field.h"

#include <optional>
#include <string>

namespace mxauthor {

/// An SVG drawing as XML text.
struct [[nodiscard]] Drawing
{
    std::string svg;                    ///< At most 1 MiB.
    std::optional<std::string> problem; ///< Why there is no drawing; empty: there is one.
};

/// Returns the drawing that `bytes` are when compressed with gzip, as a product image is stored. A
/// problem: not gzip data, damaged, too large, malformed XML, another root element than "svg".
Drawing unpackedDrawing(const Bytes& bytes);

} // namespace mxauthor
