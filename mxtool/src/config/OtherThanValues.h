#pragma once

#include "Diagnostic.h"

#include <optional>
#include <string>

namespace mxtool {

/// Returns the error for `content`, that of the input `file`, if it is recognised as something
/// other than a file of values: the message names its kind, the hint the option or verb for it.
/// Returns nothing if it may be a file of values. Use it only if reading the values fails: content
/// that looks like another kind may still be values.
[[nodiscard]] std::optional<Failure> otherThanValues(const std::string& content,
                                                     const std::string& file);

} // namespace mxtool
