#pragma once

#include <string_view>

namespace mxtool {

/// Returns whether `content` begins with a byte order mark of UTF-16.
bool isUtf16(std::string_view content);

/// Returns how many bytes of `content` are control characters other than tab, line feed and
/// carriage return, which no text has.
std::size_t countOfControls(std::string_view content);

} // namespace mxtool
