#include "BlockField.h"
#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::size_t recordHeaderSize = 7;
constexpr std::size_t wordCountOffset = 6;
constexpr std::size_t channelNameSize = 3;
constexpr std::uint8_t kindNumberMask = 0x1F;

bool wholeRecordFollows(const PayloadReader& in)
{
    return in.left() >= recordHeaderSize &&
           in.left() >= recordHeaderSize + std::size_t{2} * in.peek(wordCountOffset);
}

// Lists the fields of a record up to its words, for reading and writing.
template <typename Io, typename Record>
void transferHead(Io& io, Record& record)
{
    io.field(record.number);
    io.field(record.kind);
    io.field(record.unread2);
    io.field(record.bitLength);
    io.field(record.bitOffset);
    io.field(record.unread5);
    io.count(record.wordCount, record.words.size());
}

} // namespace

bool ChannelRecord::isSigned() const
{
    return isSignedDatatype(kind.value & kindNumberMask);
}

void read(PayloadReader& in, Channels& group)
{
    while (wholeRecordFollows(in)) {
        ChannelRecord& record = group.records.emplace_back();
        transferHead(in, record);
        record.words.resize(record.wordCount.value);
        for (Field<std::uint16_t>& word : record.words) {
            in.field(word);
        }
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Channels& group)
{
    for (const ChannelRecord& record : group.records) {
        transferHead(out, record);
        for (const Field<std::uint16_t>& word : record.words) {
            out.field(word);
        }
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, ChannelNames& group)
{
    while (in.left() >= channelNameSize) {
        ChannelName& entry = group.entries.emplace_back();
        in.field(entry.channel);
        in.field(entry.textId);
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const ChannelNames& group)
{
    for (const ChannelName& entry : group.entries) {
        out.field(entry.channel);
        out.field(entry.textId);
    }
    out.rest(group.rest);
}

} // namespace mxauthor
