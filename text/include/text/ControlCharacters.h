#pragma once

#include <cstddef>
#include <string_view>

namespace text {

/// Returns whether `byte` is a control character, in UTF-8 as in Windows-1252.
bool isControl(char byte);

/// Returns how many bytes of `content` are control characters below the blank, except tab, line
/// feed and carriage return: texts have none.
std::size_t countOfControls(std::string_view content);

/// Returns whether `content` has one of these.
bool hasControls(std::string_view content);

} // namespace text
