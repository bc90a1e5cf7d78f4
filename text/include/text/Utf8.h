#pragma once

#include <datamodel/Utf8Text.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

using datamodel::toUtf8;

/// Returns one character as UTF-8.
std::string toUtf8(char32_t point);

/// Returns the UTF-8 character of the `length` bytes at `position` of `bytes`.
char32_t codePointAt(const std::string& bytes, std::size_t position, std::size_t length);

/// Returns the characters of `toUtf8(bytes)`.
std::u32string codePoints(const std::string& bytes);

/// Returns how many characters `utf8` has.
std::size_t characterCount(std::string_view utf8);

/// Returns the first byte of `bytes` from `position` on that is not part of a UTF-8 character, or
/// the size of `bytes`.
std::size_t nextNonUtf8(const std::string& bytes, std::size_t position);

/// Returns `bytes` in UTF-8: bytes that are not UTF-8 are read as Windows-1252, one by one.
std::string repairedUtf8(const std::string& bytes);

/// Returns whether `content` begins with a byte order mark of UTF-16.
bool isUtf16(std::string_view content);

} // namespace text
