#include "GroupCodecs.h"

namespace mxauthor {

void read(PayloadReader& in, RawGroup& group)
{
    in.rest(group.bytes);
}

void write(PayloadWriter& out, const RawGroup& group)
{
    out.rest(group.bytes);
}

} // namespace mxauthor
