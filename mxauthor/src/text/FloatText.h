#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mxauthor {

/// Returns the shortest text of the IEEE-754 binary32 with these bits that reads back as it; "bits
/// 7fc00001" for infinities and NaNs.
std::string floatText(std::uint32_t bits);

/// Returns the bits of the binary32 nearest to the number that `text` spells, or those after "bits
/// ". Empty if it is not a number or is out of range.
[[nodiscard]] std::optional<std::uint32_t> parseFloat(const std::string& text);

} // namespace mxauthor
