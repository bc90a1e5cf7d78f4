#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// A parameter record of group 0x20c0.
struct ParameterRecord
{
    Field<std::uint8_t> number;
    Field<std::uint16_t> nameId;
    Field<std::uint8_t> position; ///< Of the value in the block, plus 4 (modulo 256).
    Field<std::uint8_t> datatype;
    Field<std::uint8_t> flags;      ///< Bit 2: shown in physical units.
    Field<std::uint8_t> conversion; ///< Identifier, 0 = none.
    Field<std::uint8_t> optionList; ///< Identifier, 0 = none.
    Field<std::uint64_t> minimum;
    Field<std::uint64_t> maximum;
    Field<std::uint16_t> unitId; ///< 0 = none.
    Field<std::uint8_t> bitLength;
    Field<std::uint8_t> bitOffset;
    Field<std::uint8_t> channel; ///< 255 = the module itself.
};

/// Group 0x20c0.
struct Parameters
{
    std::vector<ParameterRecord> records;
    Field<Bytes> rest; ///< Fewer bytes than a record, behind the last one.
};

} // namespace mxauthor
