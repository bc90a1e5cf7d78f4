#include "GroupCodecs.h"

#include <mxformat/ParameterBlock.h>

namespace mxauthor {

namespace {

bool wholeListFollows(const PayloadReader& in)
{
    const std::uint8_t* const head = in.peek(mxformat::optionListHeaderSize);
    return head != nullptr &&
           in.peek(mxformat::optionListSize(
               mxformat::readRecord<mxformat::OptionListHeader>(head).count)) != nullptr;
}

} // namespace

mxformat::ParameterRecord plainRecord(const ParameterRecord& record)
{
    PayloadWriter out;
    mxformat::ParameterRecord::transfer(out, record);
    return mxformat::readRecord<mxformat::ParameterRecord>(out.payload.data());
}

mxformat::BlockField blockFieldOf(const ParameterRecord& record)
{
    return mxformat::BlockField(plainRecord(record));
}

void read(PayloadReader& in, ParameterBlock& group)
{
    in.field(group.version);
    in.field(group.descriptor);
    const std::uint8_t headerSize = mxformat::parameterBlockHeaderSize(group.descriptor.value);
    if (headerSize < mxformat::parameterBlockFixedHeader) {
        throw UnexpectedShape(); // the block starts within its own header
    }
    in.bytes(group.skipped, headerSize - mxformat::parameterBlockFixedHeader);
    in.rest(group.block);
}

void write(PayloadWriter& out, const ParameterBlock& group)
{
    out.field(group.version);
    out.field(group.descriptor);
    out.rest(group.skipped);
    out.rest(group.block);
}

void read(PayloadReader& in, Parameters& group)
{
    while (in.left() >= mxformat::parameterRecordSize) {
        mxformat::ParameterRecord::transfer(in, group.records.emplace_back());
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Parameters& group)
{
    for (const ParameterRecord& record : group.records) {
        mxformat::ParameterRecord::transfer(out, record);
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, OptionLists& group)
{
    while (wholeListFollows(in)) {
        OptionList& list = group.lists.emplace_back();
        mxformat::OptionListHeader::transfer(in, list);
        list.options.resize(list.count.value);
        for (Option& option : list.options) {
            mxformat::OptionRecord::transfer(in, option);
        }
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const OptionLists& group)
{
    for (const OptionList& list : group.lists) {
        mxformat::OptionListHeaderOf<Field> header = list;
        header.count = byteCount(list.options.size());
        mxformat::OptionListHeader::transfer(out, header);
        for (const Option& option : list.options) {
            mxformat::OptionRecord::transfer(out, option);
        }
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, Conversions& group)
{
    while (in.left() >= mxformat::conversionRecordSize) {
        mxformat::ConversionRecord::transfer(in, group.entries.emplace_back());
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Conversions& group)
{
    for (const Conversion& entry : group.entries) {
        mxformat::ConversionRecord::transfer(out, entry);
    }
    out.rest(group.rest);
}

} // namespace mxauthor
