#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::uint8_t fixedHeaderSize = 2; // version and descriptor
constexpr std::size_t recordSize = 29;
constexpr std::size_t listHeaderSize = 2;
constexpr std::size_t optionSize = 10;
constexpr std::size_t conversionSize = 11;

// Lists the fields of a record in file order, for reading and writing.
template <typename Io, typename Record>
void transferRecord(Io& io, Record& record)
{
    io.field(record.number);
    io.field(record.nameId);
    io.field(record.position);
    io.field(record.datatype);
    io.field(record.flags);
    io.field(record.conversion);
    io.field(record.optionList);
    io.field(record.minimum);
    io.field(record.maximum);
    io.field(record.unitId);
    io.field(record.bitLength);
    io.field(record.bitOffset);
    io.field(record.channel);
}

bool wholeListFollows(const PayloadReader& in)
{
    return in.left() >= listHeaderSize && in.left() >= listHeaderSize + optionSize * in.peek(1);
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
    while (in.left() >= recordSize) {
        transferRecord(in, group.records.emplace_back());
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Parameters& group)
{
    for (const ParameterRecord& record : group.records) {
        transferRecord(out, record);
    }
    out.rest(group.rest);
}

void read(PayloadReader& in, OptionLists& group)
{
    while (wholeListFollows(in)) {
        OptionList& list = group.lists.emplace_back();
        in.field(list.id);
        in.field(list.count);
        list.options.resize(list.count.value);
        for (Option& option : list.options) {
            in.field(option.value);
            in.field(option.textId);
        }
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const OptionLists& group)
{
    for (const OptionList& list : group.lists) {
        out.field(list.id);
        out.count(list.count, list.options.size());
        for (const Option& option : list.options) {
            out.field(option.value);
            out.field(option.textId);
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
