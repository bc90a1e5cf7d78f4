#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace text {

/// Appends the lowest `digits` hexadecimal digits of `value` to `text`, in lower case.
void appendHex(std::string& text, std::uint64_t value, int digits);

/// Returns the lowest `digits` hexadecimal digits of `value`, in lower case.
std::string hexOf(std::uint64_t value, int digits);

/// Returns the `count` bytes at `data` as two digits each, `between` between them.
std::string hexOfBytes(const void* data, std::size_t count, const char* between);

/// Returns the value of a hexadecimal digit of either case; nothing for another character.
std::optional<unsigned> hexDigit(char digit);

} // namespace text
