#pragma once

#include <string_view>

namespace mxtool {

/// Returns whether `content` begins with a byte order mark of UTF-16.
bool isUtf16(std::string_view content);

} // namespace mxtool
