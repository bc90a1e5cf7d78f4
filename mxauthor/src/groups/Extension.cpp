#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::size_t dateSize = 10;

} // namespace

void read(PayloadReader& in, Extension& group)
{
    in.field(group.version);
    in.field(group.gtinId);
    in.bytes(group.date, dateSize);
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Extension& group)
{
    out.field(group.version);
    out.field(group.gtinId);
    out.rest(group.date);
    out.rest(group.rest);
}

} // namespace mxauthor
