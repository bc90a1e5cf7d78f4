#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// An entry of group 0x20d7.
struct ChannelName
{
    Field<std::uint8_t> channel; ///< Its number.
    Field<std::uint16_t> textId;
};

/// Group 0x20d7.
struct ChannelNames
{
    std::vector<ChannelName> entries;
    Field<Bytes> rest; ///< Fewer bytes than an entry, behind the last one.
};

} // namespace mxauthor
