#pragma once

#include <cstdint>

namespace mxformat {

/// The bits of a bit field (datatype 5) within its one byte.
struct BitPlace
{
    std::uint8_t shift = 0; ///< Of its lowest bit.
    std::uint8_t count = 0; ///< 0: the field has no place.

    bool exists() const { return count != 0; }

    /// Returns the bits as a mask of the byte.
    std::uint8_t mask() const { return static_cast<std::uint8_t>(((1U << count) - 1) << shift); }
};

/// Returns the bits that a record states as `bitLength` and `bitOffset`: from the offset up, as far
/// as bit 7 for a length of 0. A field with a bit outside its byte has no place at all: whoever
/// wrote only some of its bits would set another value than the one asked for.
constexpr BitPlace bitPlace(unsigned bitLength, unsigned bitOffset)
{
    constexpr unsigned bitsOfByte = 8;
    if (bitOffset >= bitsOfByte || bitOffset + bitLength > bitsOfByte) {
        return {};
    }
    const unsigned count = bitLength == 0 ? bitsOfByte - bitOffset : bitLength;
    return {static_cast<std::uint8_t>(bitOffset), static_cast<std::uint8_t>(count)};
}

} // namespace mxformat
