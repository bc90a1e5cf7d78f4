#pragma once

#include "mxauthor/TextForm.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns where `text`, which people wrote, is not UTF-8, and which byte is there; nothing where
/// all of it is.
[[nodiscard]] std::optional<SourceError> findNonUtf8(const std::string& text);

} // namespace mxauthor
