#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mxauthor {

/// Returns the shortest text of the IEEE-754 binary32 with these bits that reads back as it; "bits
/// 7fc00001" for infinities and for what is no number.
std::string floatText(std::uint32_t bits);

/// Returns the bits of the binary32 nearest to the number that `text` spells, or those that stand
/// behind "bits ". Empty when it is no number, or out of range.
[[nodiscard]] std::optional<std::uint32_t> parseFloat(const std::string& text);

} // namespace mxauthor
