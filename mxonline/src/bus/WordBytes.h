#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// The numbers of 16 bits in a frame, with the high byte first.

namespace mxonline {

/// Returns the number in the two bytes from `index` on.
inline std::uint16_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t index)
{
    return static_cast<std::uint16_t>(bytes[index] << 8 | bytes[index + 1]);
}

/// Appends the lowest 16 bits of `word`.
inline void appendWord(std::vector<std::uint8_t>& bytes, std::size_t word)
{
    bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    bytes.push_back(static_cast<std::uint8_t>(word));
}

} // namespace mxonline
