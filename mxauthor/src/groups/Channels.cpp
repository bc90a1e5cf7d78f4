#include "GroupCodecs.h"

#include <mxformat/Datatype.h>

namespace mxauthor {

namespace {

bool wholeRecordFollows(const PayloadReader& in)
{
    const std::uint8_t* const head = in.peek(mxformat::channelRecordHeaderSize);
    return head != nullptr &&
           in.peek(mxformat::channelRecordSize(
               mxformat::readRecord<mxformat::ChannelRecord>(head).wordCount)) != nullptr;
}

} // namespace

bool ChannelRecord::isSigned() const
{
    const auto* const type = mxformat::findDatatype(mxformat::channelKind(kind.value));
    return type != nullptr && type->isSigned;
}

void read(PayloadReader& in, Channels& group)
{
    while (wholeRecordFollows(in)) {
        ChannelRecord& record = group.records.emplace_back();
        mxformat::ChannelRecord::transfer(in, record);
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
        mxformat::ChannelRecordOf<Field> head = record;
        head.wordCount = byteCount(record.words.size());
        mxformat::ChannelRecord::transfer(out, head);
        for (const Field<std::uint16_t>& word : record.words) {
            out.field(word);
        }
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, ChannelNames& group)
{
    while (in.left() >= mxformat::channelNameSize) {
        mxformat::ChannelName::transfer(in, group.entries.emplace_back());
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const ChannelNames& group)
{
    for (const ChannelName& entry : group.entries) {
        mxformat::ChannelName::transfer(out, entry);
    }
    out.rest(group.rest);
}

} // namespace mxauthor
