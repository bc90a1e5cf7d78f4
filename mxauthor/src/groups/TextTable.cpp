#include "GroupCodecs.h"
#include "LineEnd.h"

namespace mxauthor {

void read(PayloadReader& in, TextTable& group)
{
    in.field(group.head);
    while (in.left() > 0) {
        TextRecord& record = group.texts.emplace_back();
        in.field(record.id);
        readLine(in, record.text);
    }
}

void write(PayloadWriter& out, const TextTable& group)
{
    out.field(group.head);
    for (const TextRecord& record : group.texts) {
        out.field(record.id);
        writeLine(out, record.text);
    }
}

} // namespace mxauthor
