#pragma once

#include <mxformat/WholeNumber.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace mxfileext {

/// Where a parameter's value lies in a parameter block, and which numbers fit there.
///
/// Raw values travel as 64 bits, sign-extended for signed datatypes.
class ParameterField
{
public:
    /// Reads the place from a 29-byte parameter record.
    explicit ParameterField(const std::uint8_t* record);

    std::uint8_t byteOffset() const { return offset; } ///< First byte in the block.
    std::uint8_t byteCount() const { return bytes; }   ///< 0 for an invalid datatype.
    std::uint8_t bitCount() const { return bits; }     ///< 0 where the value has no bits at all.

    /// Whether the value has bits at all and lies within a block of `size` bytes.
    bool liesWithin(std::size_t size) const;

    std::uint64_t read(const std::uint8_t* block) const;           ///< Returns the raw value.
    void write(std::uint8_t* block, std::uint64_t rawValue) const; ///< Changes its bits only.

    std::uint64_t lowest() const;  ///< The natural lower bound, as a raw value.
    std::uint64_t highest() const; ///< The natural upper bound, as a raw value.

    /// Returns the number in an 8-byte `slot` as a raw value: the last bytes, as many as the
    /// datatype has. A bit field does not narrow it.
    std::uint64_t fromSlot(std::uint64_t slot) const;

    /// Returns the raw value as a number.
    mxformat::WholeNumber number(std::uint64_t rawValue) const;

    /// Whether the datatype or bit field can hold `value`.
    bool holds(const mxformat::WholeNumber& value) const;

    /// Returns the decimal text of a raw value; empty for an invalid datatype.
    std::string text(std::uint64_t rawValue) const;

private:
    std::uint8_t offset;
    std::uint8_t datatype;
    std::uint8_t bytes = 0;
    std::uint8_t shift = 0; // of the lowest bit, in its byte
    std::uint8_t bits = 0;
    bool isSigned = false;
};

/// Splits `value` into 8 bytes, most significant first.
void toSlot(std::uint64_t value, std::uint8_t* slot);

} // namespace mxfileext
