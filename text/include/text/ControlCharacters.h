#pragma once

#include <cstddef>
#include <string_view>

namespace text {

/// Returns whether `byte` is a control character, in UTF-8 as in Windows-1252.
bool isControl(char byte);

/// Returns how many bytes of `content` are control characters below the blank, which no text has:
/// other than tab, line feed and carriage return.
std::size_t countOfControls(std::string_view content);

} // namespace text
