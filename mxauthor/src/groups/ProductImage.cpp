#include "GroupCodecs.h"

namespace mxauthor {

void read(PayloadReader& in, ProductImage& group)
{
    in.rest(group.bytes);
}

void write(PayloadWriter& out, const ProductImage& group)
{
    out.rest(group.bytes);
}

} // namespace mxauthor
