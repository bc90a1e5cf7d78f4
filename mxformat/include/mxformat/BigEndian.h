#pragma once

#include <cstdint>

namespace mxformat {

/// Returns the big-endian number of the unsigned type `Number` at `bytes`; any alignment will do.
/// The caller guarantees that the bytes exist.
template <typename Number>
constexpr Number readBigEndian(const std::uint8_t* bytes)
{
    if constexpr (sizeof(Number) == 8) {
        return std::uint64_t{readBigEndian<std::uint32_t>(bytes)} << 32 |
               readBigEndian<std::uint32_t>(bytes + 4);
    } else if constexpr (sizeof(Number) == 4) {
        return std::uint32_t{readBigEndian<std::uint16_t>(bytes)} << 16 |
               readBigEndian<std::uint16_t>(bytes + 2);
    } else if constexpr (sizeof(Number) == 2) {
        return static_cast<Number>(bytes[0] << 8 | bytes[1]);
    } else {
        return bytes[0];
    }
}

/// Writes the low `size` bytes of `number` to `bytes`, the most significant first.
constexpr void writeBigEndian(std::uint64_t number, unsigned size, std::uint8_t* bytes)
{
    for (unsigned i = size; i-- > 0; number >>= 8) {
        bytes[i] = static_cast<std::uint8_t>(number);
    }
}

} // namespace mxformat
