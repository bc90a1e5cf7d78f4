#pragma once

#include "mxformat/RecordReader.h"

#include <cstdint>

namespace mxformat {

/// A record of the group `parameters`.
template <template <typename> class FieldOf>
struct ParameterRecordOf
{
    FieldOf<std::uint8_t> number{};
    FieldOf<std::uint16_t> nameId{};
    FieldOf<std::uint8_t> position{}; ///< Of the value in the parameter block, plus 4 in 8 bits.
    FieldOf<std::uint8_t> datatype{};
    FieldOf<std::uint8_t> flags{};
    FieldOf<std::uint8_t> conversion{}; ///< Identifier, 0: none.
    FieldOf<std::uint8_t> optionList{}; ///< Identifier, 0: none.
    FieldOf<std::uint64_t> minimum{};   ///< An 8-byte slot, as is `maximum`.
    FieldOf<std::uint64_t> maximum{};
    FieldOf<std::uint16_t> unitId{}; ///< 0: none.
    FieldOf<std::uint8_t> bitLength{};
    FieldOf<std::uint8_t> bitOffset{};
    FieldOf<std::uint8_t> channel{}; ///< `moduleLevel`: the module itself.

    template <typename Io, typename Record>
    static constexpr void transfer(Io& io, Record& record)
    {
        io.field(record.number);
        io.field(record.nameId);
        io.field(record.position);
        io.field(record.datatype);
        io.field(record.flags);
        io.field(record.conversion);
        io.field(record.optionList);
        io.field(record.minimum);
        io.field(record.maximum);
        io.field(record.unitId);
        io.field(record.bitLength);
        io.field(record.bitOffset);
        io.field(record.channel);
    }
};

using ParameterRecord = ParameterRecordOf<Plain>;

/// Bytes of a parameter record.
constexpr std::uint32_t parameterRecordSize = sizeOfRecord<ParameterRecord>();

/// @name Bits of `flags`
/// @{
constexpr std::uint8_t parameterFlag0 = 0x01; ///< Its meaning is the host's.
constexpr std::uint8_t parameterFlag1 = 0x02; ///< Its meaning is the host's.
constexpr std::uint8_t convertedFlag = 0x04;  ///< Shown and set in physical units.
/// @}

constexpr bool isConverted(std::uint8_t flags)
{
    return (flags & convertedFlag) != 0;
}

/// In `channel`: a parameter of the module itself.
constexpr std::uint8_t moduleLevel = 255;

/// Returns the byte of the parameter block that a record's `position` means.
constexpr std::uint8_t blockPosition(std::uint8_t position)
{
    constexpr std::uint8_t bias = 4; // records count from 4
    return static_cast<std::uint8_t>(position - bias);
}

/// Returns the `position` that a record states for a byte of the parameter block.
constexpr std::uint8_t statedPosition(std::uint8_t blockByte)
{
    return static_cast<std::uint8_t>(blockByte - blockPosition(0));
}

} // namespace mxformat
