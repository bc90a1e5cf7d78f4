#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::size_t recordSize = 29;

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

} // namespace

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

} // namespace mxauthor
