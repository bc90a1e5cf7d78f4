#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::uint8_t fixedHeaderSize = 2; // version and descriptor
constexpr std::size_t conversionSize = 11;

bool wholeListFollows(const PayloadReader& in)
{
    const std::uint8_t* const head = in.peek(mxformat::optionListHeaderSize);
    return head != nullptr &&
           in.peek(mxformat::optionListSize(mxformat::readOptionListHeader(head).count)) != nullptr;
}

// Lists the fields of an entry in file order, for reading and writing.
template <typename Io, typename Entry>
void transferEntry(Io& io, Entry& entry)
{
    io.field(entry.id);
    io.field(entry.factor);
    io.field(entry.offset);
    io.field(entry.unitId);
}

} // namespace

std::uint8_t parameterBlockHeaderSize(std::uint8_t descriptor)
{
    return static_cast<std::uint8_t>(descriptor + 4 * (descriptor & 0x3F) + fixedHeaderSize);
}

mxformat::ParameterRecord plainRecord(const ParameterRecord& record)
{
    PayloadWriter out;
    mxformat::transferParameterRecord(out, record);
    return mxformat::readParameterRecord(out.payload.data());
}

mxformat::BlockField blockFieldOf(const ParameterRecord& record)
{
    return mxformat::BlockField(plainRecord(record));
}

void read(PayloadReader& in, ParameterBlock& group)
{
    in.field(group.version);
    in.field(group.descriptor);
    const std::uint8_t headerSize = parameterBlockHeaderSize(group.descriptor.value);
    if (headerSize < fixedHeaderSize) {
        throw UnexpectedShape(); // the block starts within its own header
    }
    in.bytes(group.skipped, headerSize - fixedHeaderSize);
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
        mxformat::transferParameterRecord(in, group.records.emplace_back());
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Parameters& group)
{
    for (const ParameterRecord& record : group.records) {
        mxformat::transferParameterRecord(out, record);
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, OptionLists& group)
{
    while (wholeListFollows(in)) {
        OptionList& list = group.lists.emplace_back();
        mxformat::transferOptionListHeader(in, list);
        list.options.resize(list.count.value);
        for (Option& option : list.options) {
            mxformat::transferOptionRecord(in, option);
        }
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const OptionLists& group)
{
    for (const OptionList& list : group.lists) {
        mxformat::OptionListHeaderOf<Field> header = list;
        header.count = byteCount(list.options.size());
        mxformat::transferOptionListHeader(out, header);
        for (const Option& option : list.options) {
            mxformat::transferOptionRecord(out, option);
        }
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, Conversions& group)
{
    while (in.left() >= conversionSize) {
        transferEntry(in, group.entries.emplace_back());
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Conversions& group)
{
    for (const Conversion& entry : group.entries) {
        transferEntry(out, entry);
    }
    out.rest(group.rest);
}

} // namespace mxauthor
