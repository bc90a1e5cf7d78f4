#pragma once

#include "mxauthor/Field.h"

#include <mxformat/BlockField.h>
#include <mxformat/ConversionTable.h>
#include <mxformat/OptionRecord.h>

namespace mxauthor {

/// Group `parameterBlock`, the default parameter block after a header of variable length.
struct ParameterBlock
{
    Field<std::uint8_t> version;
    Field<std::uint8_t> descriptor; ///< Says how long the header is.
    Field<Bytes> skipped;           ///< The rest of the header.
    Field<Bytes> block;
};

/// A record of the group `parameters`.
using ParameterRecord = mxformat::ParameterRecordOf<Field>;

/// Returns the values of `record` without their places in the file.
mxformat::ParameterRecord plainRecord(const ParameterRecord& record);

/// Returns where the value of the parameter lies in the block.
mxformat::BlockField blockFieldOf(const ParameterRecord& record);

/// Group `parameters`.
struct Parameters
{
    std::vector<ParameterRecord> records;
    Field<Bytes> rest; ///< Fewer bytes than a record, after the last one.
};

using Option = mxformat::OptionRecordOf<Field>;

struct OptionList : mxformat::OptionListHeaderOf<Field>
{
    std::vector<Option> options; ///< Their number is written, `count` is ignored.
};

/// Group `optionLists`.
struct OptionLists
{
    std::vector<OptionList> lists;
    Field<Bytes> rest; ///< Bytes after the last list that is whole.
};

/// An entry of the group `conversions`. The numbers are kept as bits: the text of a float does not
/// distinguish all of them, such as the different NaNs.
using Conversion = mxformat::ConversionRecordOf<Field>;

/// Group `conversions`.
struct Conversions
{
    std::vector<Conversion> entries;
    Field<Bytes> rest; ///< Fewer bytes than an entry, after the last one.
};

} // namespace mxauthor
