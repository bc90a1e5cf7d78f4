#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace text {

/// Appends the lowest `digits` hexadecimal digits of `value` to `text`, in lower case.
void appendHex(std::string& text, std::uint64_t value, int digits);

/// Returns the lowest `digits` hexadecimal digits of `value`, in lower case.
std::string hexOf(std::uint64_t value, int digits);

/// Returns the `count` bytes at `data` as two digits each, `between` between them.
std::string hexOfBytes(const void* data, std::size_t count, const char* between);

/// Returns `count` bytes from `begin` as two digits each, separated by blanks. Stops at the end of
/// `bytes`.
std::string hexOfBytes(const std::vector<char>& bytes, std::size_t begin, std::size_t count);

/// Returns `bytes` as two digits each, without blanks.
std::string toHex(const std::vector<std::uint8_t>& bytes);

/// Returns the bytes that `text` spells by two digits each; white space is ignored. Nothing if it
/// is not hexadecimal text.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> fromHex(const std::string& text);

/// Returns the value of a hexadecimal digit of either case; nothing for another character.
std::optional<unsigned> hexDigit(char digit);

} // namespace text
