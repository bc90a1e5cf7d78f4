#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::size_t conversionSize = 11;

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
