#pragma once

#include "mxformat/RecordReader.h"

#include <cstdint>

namespace mxformat {

/// A record of the group `channels` up to its words. `FieldOf` as in `ParameterRecordOf`.
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
};

/// Hands the fields of `record`, a `ChannelRecordOf`, to `io` in the order of the file. This list
/// is the layout of the record.
template <typename Io, typename Record>
constexpr void transferChannelRecord(Io& io, Record& record)
{
    io.field(record.number);
    io.field(record.kind);
    io.field(record.unread2);
    io.field(record.bitLength);
    io.field(record.bitOffset);
    io.field(record.unread5);
    io.field(record.wordCount);
}

using ChannelRecord = ChannelRecordOf<Plain>;

constexpr std::uint32_t sizeOfChannelRecordHeader()
{
    RecordSize counted;
    ChannelRecord record;
    transferChannelRecord(counted, record);
    return counted.size;
}

/// Bytes of a channel record before its words.
constexpr std::uint32_t channelRecordHeaderSize = sizeOfChannelRecordHeader();

/// Reads the `channelRecordHeaderSize` bytes at `bytes`.
inline ChannelRecord readChannelRecord(const std::uint8_t* bytes)
{
    RecordReader in(bytes);
    ChannelRecord record;
    transferChannelRecord(in, record);
    return record;
}

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

} // namespace mxformat
