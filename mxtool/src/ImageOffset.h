#pragma once

#include "Diagnostic.h"

#include <cstdint>
#include <optional>
#include <string>

namespace mxtool {

/// Returns a warning where a module's data of `size` bytes from `offset` on ends after the largest
/// process image of a fieldbus; nothing else. `option` is what the call says the offset with.
[[nodiscard]] std::optional<Diagnostic> offsetWarning(const std::string& option,
                                                      std::uint64_t offset, std::uint64_t size);

} // namespace mxtool
