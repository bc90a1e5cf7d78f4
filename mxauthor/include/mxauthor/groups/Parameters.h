#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Group `parameterBlock`, the default parameter block after a header of variable length.
struct ParameterBlock
{
    Field<std::uint8_t> version;
    Field<std::uint8_t> descriptor; ///< Says how long the header is.
    Field<Bytes> skipped;           ///< The rest of the header.
    Field<Bytes> block;
};

/// Returns how many bytes the header of the block has, `version` and `descriptor` included; modulo
/// 256, as readers compute it.
std::uint8_t parameterBlockHeaderSize(std::uint8_t descriptor);

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

/// Group `parameters`.
struct Parameters
{
    std::vector<ParameterRecord> records;
    Field<Bytes> rest; ///< Fewer bytes than a record, behind the last one.
};

struct Option
{
    Field<std::uint64_t> value;
    Field<std::uint16_t> textId;
};

struct OptionList
{
    Field<std::uint8_t> id;
    Field<std::uint8_t> count; ///< Of `options`.
    std::vector<Option> options;
};

/// Group `optionLists`.
struct OptionLists
{
    std::vector<OptionList> lists;
    Field<Bytes> rest; ///< Bytes behind the last list that is whole.
};

/// An entry of the group `conversions`. The numbers are kept as the bits of IEEE-754 binary32:
/// there are some, such as the many that are no number, which no text of a float tells apart.
struct Conversion
{
    Field<std::uint8_t> id;
    Field<std::uint32_t> factor;
    Field<std::uint32_t> offset;
    Field<std::uint16_t> unitId; ///< 0 = none.
};

/// Group `conversions`.
struct Conversions
{
    std::vector<Conversion> entries;
    Field<Bytes> rest; ///< Fewer bytes than an entry, behind the last one.
};

} // namespace mxauthor
