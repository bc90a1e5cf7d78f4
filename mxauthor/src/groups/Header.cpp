#include "GroupCodecs.h"

namespace mxauthor {

void read(PayloadReader& in, Header& group)
{
    in.field(group.contentLength);
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Header& group)
{
    out.field(group.contentLength);
    out.rest(group.rest);
}

} // namespace mxauthor
