#pragma once

#include "mxauthor/Field.h"

#include <mxformat/ChannelRecord.h>

namespace mxauthor {

/// A record of the group `channels`.
struct ChannelRecord : mxformat::ChannelRecordOf<Field>
{
    std::vector<Field<std::uint16_t>> words; ///< Their number is written, `wordCount` is ignored.

    /// Returns whether the channel's value has a sign. Kinds have the numbers of datatypes.
    bool isSigned() const;
};

/// Group `channels`.
struct Channels
{
    std::vector<ChannelRecord> records;
    Field<Bytes> rest; ///< Bytes after the last record that is whole.
};

/// An entry of the group `channelNames`.
using ChannelName = mxformat::ChannelNameOf<Field>;

/// Group `channelNames`.
struct ChannelNames
{
    std::vector<ChannelName> entries;
    Field<Bytes> rest; ///< Fewer bytes than an entry, after the last one.
};

} // namespace mxauthor
