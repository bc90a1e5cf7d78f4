#include "GroupCodecs.h"
#include "LineEnd.h"

namespace mxauthor {

void read(PayloadReader& in, Entries& group)
{
    while (in.left() > 0) {
        Entry& entry = group.entries.emplace_back();
        in.textUpTo(entry.key, ',');
        if (entry.key.value.find_first_of("\r\n") != std::string::npos) {
            throw UnexpectedShape();
        }
        in.literal(',');
        in.field(entry.kind);
        in.literal('=');
        readLine(in, entry.value);
    }
}

void write(PayloadWriter& out, const Entries& group)
{
    for (const Entry& entry : group.entries) {
        out.text(entry.key);
        out.literal(',');
        out.field(entry.kind);
        out.literal('=');
        writeLine(out, entry.value);
    }
}

} // namespace mxauthor
