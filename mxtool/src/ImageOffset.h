#pragma once

#include "Diagnostic.h"

#include <cstdint>
#include <optional>
#include <string>

namespace mxtool {

/// Returns a warning if `size` bytes from `offset` exceed the largest process image of a fieldbus.
/// `option` is the command line option that set the offset.
[[nodiscard]] std::optional<Diagnostic> offsetWarning(const std::string& option,
                                                      std::uint64_t offset, std::uint64_t size);

} // namespace mxtool
