#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// A record of the group `channels`.
struct ChannelRecord
{
    Field<std::uint8_t> number;
    Field<std::uint8_t> kind; ///< Bit 7: input; bit 6: a flag; bits 0 to 4: kind.
    Field<std::uint8_t> unread2;
    Field<std::uint8_t> bitLength;
    Field<std::uint8_t> bitOffset;
    Field<std::uint8_t> unread5;
    Field<std::uint8_t> wordCount; ///< Of `words`.
    std::vector<Field<std::uint16_t>> words;

    /// Returns whether the channel's value has a sign. Kinds have the numbers of datatypes.
    bool isSigned() const;
};

/// Group `channels`.
struct Channels
{
    std::vector<ChannelRecord> records;
    Field<Bytes> rest; ///< Bytes behind the last record that is whole.
};

/// An entry of the group `channelNames`.
struct ChannelName
{
    Field<std::uint8_t> channel; ///< Its number.
    Field<std::uint16_t> textId;
};

/// Group `channelNames`.
struct ChannelNames
{
    std::vector<ChannelName> entries;
    Field<Bytes> rest; ///< Fewer bytes than an entry, behind the last one.
};

} // namespace mxauthor
