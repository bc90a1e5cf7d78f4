#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

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

/// Group 0x20c1.
struct OptionLists
{
    std::vector<OptionList> lists;
    Field<Bytes> rest; ///< Bytes behind the last list that is whole.
};

} // namespace mxauthor
