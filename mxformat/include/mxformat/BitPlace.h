#pragma once

#include <cstdint>

namespace mxformat {

/// The bits of a bit field (datatype 5) within its one byte.
struct BitPlace
{
    unsigned shift = 0; ///< Of its lowest bit.
    unsigned count = 0; ///< 0: none of its bits lies in the byte.

    /// Returns the bits as a mask of the byte.
    std::uint8_t mask() const { return static_cast<std::uint8_t>(((1U << count) - 1) << shift); }
};

/// Returns the bits that a record states as `bitLength` and `bitOffset`: from the offset up, all of
/// the byte for a length of 0, and no further than the byte.
BitPlace bitPlace(unsigned bitLength, unsigned bitOffset);

/// Whether some of the stated bits lie outside the byte.
bool leavesItsByte(unsigned bitLength, unsigned bitOffset);

} // namespace mxformat
