#pragma once

#include <datamodel/Utf8Text.h>

#include <string>

namespace mxtool {

using datamodel::toUtf8;

/// Returns `toUtf8(bytes)` with every control character as \xNN, line separators and marks of
/// direction as \uNNNN, so that no text of a file acts on a terminal or turns its line around.
std::string forTerminal(const std::string& bytes);

/// Returns a JSON text with those of these characters that JSON leaves as they are as \uNNNN: the
/// same values, and it can be read on a terminal.
std::string harmlessJson(const std::string& json);

/// Returns the characters of `toUtf8(bytes)`.
std::u32string codePoints(const std::string& bytes);

/// Returns one character as UTF-8.
std::string toUtf8(char32_t point);

} // namespace mxtool
