#pragma once

#include "mxformat/RecordReader.h"

#include <cstdint>

namespace mxformat {

/// A record of the group `channels` up to its words.
template <template <typename> class FieldOf>
struct ChannelRecordOf
{
    FieldOf<std::uint8_t> number{};
    FieldOf<std::uint8_t> kind{}; ///< What `isInput`, `channelFlag` and `channelKind` take apart.
    FieldOf<std::uint8_t> unread2{};
    FieldOf<std::uint8_t> bitLength{};
    FieldOf<std::uint8_t> bitOffset{};
    FieldOf<std::uint8_t> unread5{};
    FieldOf<std::uint8_t> wordCount{}; ///< Words of 16 bits follow, which nothing reads.

    template <typename Io, typename Record>
    static constexpr void transfer(Io& io, Record& record)
    {
        io.field(record.number);
        io.field(record.kind);
        io.field(record.unread2);
        io.field(record.bitLength);
        io.field(record.bitOffset);
        io.field(record.unread5);
        io.field(record.wordCount);
    }
};

using ChannelRecord = ChannelRecordOf<Plain>;

/// Bytes of a channel record before its words.
constexpr std::uint32_t channelRecordHeaderSize = sizeOfRecord<ChannelRecord>();

/// Returns the bytes of a whole record that states `wordCount`.
constexpr std::uint32_t channelRecordSize(std::uint8_t wordCount)
{
    return channelRecordHeaderSize + 2U * wordCount;
}

constexpr std::uint8_t inputFlag = 0x80;       ///< In `kind`: an input, else an output.
constexpr std::uint8_t channelFlagMask = 0x40; ///< In `kind`: its meaning is the host's.
constexpr std::uint8_t channelKindMask = 0x1F; ///< In `kind`: the number of a datatype, or no data.

/// The kind that says on purpose that a channel has no data.
constexpr std::uint8_t kindWithoutData = 31;

constexpr bool isInput(std::uint8_t kind)
{
    return (kind & inputFlag) != 0;
}

constexpr std::uint8_t channelKind(std::uint8_t kind)
{
    return kind & channelKindMask;
}

/// An entry of the group `channelNames`.
template <template <typename> class FieldOf>
struct ChannelNameOf
{
    FieldOf<std::uint8_t> channel{}; ///< Its number.
    FieldOf<std::uint16_t> textId{};

    template <typename Io, typename Record>
    static constexpr void transfer(Io& io, Record& record)
    {
        io.field(record.channel);
        io.field(record.textId);
    }
};

using ChannelName = ChannelNameOf<Plain>;

/// Bytes of a `ChannelName`.
constexpr std::uint32_t channelNameSize = sizeOfRecord<ChannelName>();

} // namespace mxformat
