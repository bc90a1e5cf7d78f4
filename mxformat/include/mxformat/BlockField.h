#pragma once

#include "mxformat/BitPlace.h"
#include "mxformat/Datatype.h"
#include "mxformat/ParameterRecord.h"
#include "mxformat/WholeNumber.h"

#include <cstddef>
#include <cstdint>

namespace mxformat {

/// Where the value of a parameter lies in a parameter block, and which numbers fit there: whole
/// bytes, big-endian, or for datatype 5 some bits of one byte.
///
/// Raw values travel as 64 bits, sign-extended for signed datatypes. A field without bits (of no
/// datatype, or with bits outside its byte) lies within no block and holds no number.
class BlockField
{
public:
    /// Of the parameter whose record states this place.
    BlockField(std::uint8_t position, std::uint8_t datatype, std::uint8_t bitLength,
               std::uint8_t bitOffset);

    explicit BlockField(const ParameterRecord& record)
        : BlockField(record.position, record.datatype, record.bitLength, record.bitOffset)
    {}

    const Datatype* datatype() const { return type; } ///< Null: the number is of none.
    bool isSigned() const { return type != nullptr && type->isSigned; }

    std::uint32_t begin() const { return firstByte; } ///< First byte in the block.
    std::uint32_t size() const { return type == nullptr ? 0 : type->bytes; } ///< In bytes.
    std::uint32_t end() const { return begin() + size(); }
    unsigned firstBit() const { return shift; } ///< Lowest bit in its byte, 0 for whole bytes.
    unsigned bits() const { return bitCount; }  ///< All of the value.
    bool exists() const { return bitCount != 0; }

    /// Whether the value exists and lies within a block of `blockSize` bytes.
    bool liesWithin(std::size_t blockSize) const { return exists() && end() <= blockSize; }

    /// Whether both have a bit in common.
    bool overlaps(const BlockField& other) const;

    // Both: the field lies within the block.
    std::uint64_t read(const std::uint8_t* block) const;           ///< Returns the raw value.
    void write(std::uint8_t* block, std::uint64_t rawValue) const; ///< Changes its bits only.

    std::uint64_t lowest() const;  ///< The natural lower bound, as a raw value.
    std::uint64_t highest() const; ///< The natural upper bound, as a raw value.

    /// Returns the number in an 8-byte `slot` as a raw value: the last bytes, as many as the
    /// datatype has. A bit field does not narrow it.
    std::uint64_t fromSlot(std::uint64_t slot) const
    {
        return type == nullptr ? 0 : type->fromSlot(slot);
    }

    /// Returns the raw value as a number.
    WholeNumber number(std::uint64_t rawValue) const
    {
        return WholeNumber::ofBits(rawValue, isSigned());
    }

    /// Whether the field can hold `value`.
    bool holds(const WholeNumber& value) const;

private:
    std::uint64_t valueBits() const; ///< As many ones as the value has bits.

    const Datatype* type;
    std::uint8_t firstByte;
    std::uint8_t shift = 0;
    std::uint8_t bitCount = 0;
};

/// The raw values from `lowest` to `highest`.
struct RawRange
{
    std::uint64_t lowest = 0;
    std::uint64_t highest = 0;
};

/// Returns the range that `record` states, the natural one of `field` where it states none.
RawRange rangeOf(const ParameterRecord& record, const BlockField& field);

} // namespace mxformat
