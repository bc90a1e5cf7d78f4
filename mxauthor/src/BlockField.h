#pragma once

#include "mxauthor/groups/Parameters.h"

#include <optional>

namespace mxauthor {

/// Where the value of a parameter lies in the parameter block: whole bytes, big-endian, or some
/// bits of one byte. Bits are counted from the least significant one.
struct BlockField
{
    std::uint32_t byte = 0;
    std::uint32_t size = 0;     ///< In bytes.
    std::uint32_t firstBit = 0; ///< 0 for whole bytes.
    std::uint32_t bits = 0;     ///< All that belong to the value.
    bool isSigned = false;

    std::uint32_t end() const { return byte + size; }

    /// The least value is minus this number.
    std::uint64_t lowestMagnitude() const;
    std::uint64_t highest() const;
};

/// Returns where the value of the parameter lies; empty for an invalid datatype and for bits that
/// one byte does not have.
[[nodiscard]] std::optional<BlockField> blockFieldOf(const ParameterRecord& record);

/// Returns whether values of the datatype have a sign; false for an invalid one.
bool isSignedDatatype(std::uint8_t datatype);

/// Returns the byte of the block at which the parameter stands.
std::uint8_t blockPosition(const ParameterRecord& record);

/// Returns whether the fields have a bit in common.
bool overlap(const BlockField& a, const BlockField& b);

// Both: the field lies in the block.

/// Returns the value of the field, sign-extended where it is signed.
std::uint64_t readBlockField(const Bytes& block, const BlockField& field);

/// Puts the low bits of `value` into the field and leaves all others alone.
void writeBlockField(Bytes& block, const BlockField& field, std::uint64_t value);

} // namespace mxauthor
