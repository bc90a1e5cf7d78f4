#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mxauthor {

/// A whole number of the text form, from -2^63 to 2^64 - 1.
struct Integer
{
    bool negative = false;
    std::uint64_t magnitude = 0;

    /// Returns it in two's complement, as an 8-byte slot holds it.
    std::uint64_t bits() const { return negative ? std::uint64_t{0} - magnitude : magnitude; }
};

/// Returns the number that `text` spells: decimal, or hexadecimal with "0x", with "-" before it if
/// negative. Empty if it is not one, or too large.
[[nodiscard]] std::optional<Integer> parseInteger(const std::string& text);

/// Returns whether `text` spells a whole number, of any size, as `parseInteger` takes it.
bool isIntegerText(const std::string& text);

/// Returns `value` as "0x" and `digits` hexadecimal digits.
std::string hexText(std::uint64_t value, int digits);

} // namespace mxauthor
