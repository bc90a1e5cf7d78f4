#include "GroupCodecs.h"

namespace mxauthor {

namespace {

// Reads a text and its line end CR LF. A text with NUL or LF is ambiguous, since readers end it in
// different places: `UnexpectedShape`.
void readLine(PayloadReader& in, Field<std::string>& text)
{
    in.textUpTo(text, '\r');
    in.literal('\r');
    in.literal('\n');
    if (text.value.find_first_of(std::string("\0\n", 2)) != std::string::npos) {
        throw UnexpectedShape();
    }
}

void writeLine(PayloadWriter& out, const Field<std::string>& text)
{
    out.text(text);
    out.literal('\r');
    out.literal('\n');
}

} // namespace

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
