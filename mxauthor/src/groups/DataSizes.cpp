#include "GroupCodecs.h"
#include "LineEnd.h"

namespace mxauthor {

void read(PayloadReader& in, DataSizes& group)
{
    while (in.left() > 0) {
        readLine(in, group.lines.emplace_back());
    }
}

void write(PayloadWriter& out, const DataSizes& group)
{
    for (const Field<std::string>& line : group.lines) {
        writeLine(out, line);
    }
}

} // namespace mxauthor
