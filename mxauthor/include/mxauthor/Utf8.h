#pragma once

#include "mxauthor/TextForm.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns the place of the first byte of `text` that is not UTF-8, and the byte; nothing if all of
/// it is.
[[nodiscard]] std::optional<SourceError> findNonUtf8(const std::string& text);

} // namespace mxauthor
