#pragma once

#include <cstdint>

namespace mxformat {

/// The only version of the payload of the group `parameterBlock`: version (u8), descriptor (u8),
/// the rest of the header, the block.
constexpr std::uint8_t parameterBlockVersion = 0;

constexpr std::uint8_t parameterBlockFixedHeader = 2; ///< Bytes of version and descriptor.
constexpr std::uint32_t largestParameterBlock = 255;  ///< In bytes: readers count them in a byte.

/// Returns the bytes of the whole header; the sum is kept in eight bits.
constexpr std::uint8_t parameterBlockHeaderSize(std::uint8_t descriptor)
{
    return static_cast<std::uint8_t>(descriptor + 4 * (descriptor & 0x3F) +
                                     parameterBlockFixedHeader);
}

} // namespace mxformat
