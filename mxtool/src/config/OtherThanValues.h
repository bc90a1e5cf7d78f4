#pragma once

#include "Diagnostic.h"

#include <optional>
#include <string>

namespace mxtool {

/// Returns what `content`, that of the input called `file`, seems to be other than a file of
/// values, and what takes it; nothing where it may be one. What looks like another text may hold
/// values all the same.
[[nodiscard]] std::optional<Failure> otherThanValues(const std::string& content,
                                                     const std::string& file);

} // namespace mxtool
