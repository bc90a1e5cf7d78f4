#pragma once

#include <string>

namespace text {

/// Returns `toUtf8(bytes)` with every control character as \xNN, line separators and direction
/// marks as \uNNNN, so that no text of a file controls a terminal or reverses its line.
std::string forTerminal(const std::string& bytes);

/// Returns a JSON text in which such characters that JSON does not escape are \uNNNN: the same
/// values, safe to show on a terminal.
std::string harmlessJson(const std::string& json);

} // namespace text
