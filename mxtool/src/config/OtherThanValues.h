#pragma once

#include "Diagnostic.h"

#include <optional>
#include <string>

namespace mxtool {

/// Returns why `content`, that of the input called `file`, is no file of values where it shows to
/// be something else: what it is, and what takes it. A text may hold values all the same.
std::optional<Failure> otherThanValues(const std::string& content, const std::string& file);

} // namespace mxtool
