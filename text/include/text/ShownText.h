#pragma once

#include <string>

namespace text {

/// Returns `toUtf8(bytes)` with every control character as \xNN, line separators and marks of
/// direction as \uNNNN, so that no text of a file acts on a terminal or turns its line around.
std::string forTerminal(const std::string& bytes);

/// Returns a JSON text with those of these characters that JSON leaves as they are as \uNNNN: the
/// same values, and it can be read on a terminal.
std::string harmlessJson(const std::string& json);

} // namespace text
