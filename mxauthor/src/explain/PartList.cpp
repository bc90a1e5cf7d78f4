#include "explain/PartList.h"

namespace mxauthor {

namespace {

using Kind = ExplainedPart::Kind;

// What is between two fields: a line end, or a single byte that separates them.
ExplainedPart fillingBehind(const ExplainedPart& previous, const Place& gap,
                            const std::vector<char>& bytes)
{
    ExplainedPart filling = previous;
    const bool isLineEnd = gap.length >= 2 && bytes[gap.offset] == '\r';
    filling.place = {gap.group, gap.offset, isLineEnd ? 2U : 1U};
    filling.field = isLineEnd ? "line_end" : "separator";
    filling.kind = Kind::Raw;
    filling.value.clear();
    filling.meaning.clear();
    return filling;
}

} // namespace

void PartList::beginRecord(std::size_t index, const std::string& subjectOfRecord)
{
    record = static_cast<int>(index);
    subject = subjectOfRecord;
}

void PartList::endRecords()
{
    record = -1;
    subject.clear();
}

void PartList::add(const Place& place, const char* name, Kind kind, const std::string& value,
                   const std::string& meaning)
{
    lastIsEmpty = place.length == 0;
    if (!lastIsEmpty) {
        parts.push_back({place, group, record, subject, name, kind, value, meaning, groupIsRead});
    }
}

void PartList::text(const Field<std::string>& field, const char* name, const std::string& meaning)
{
    add(field.place, name, Kind::Text, field.value, meaning);
}

void PartList::bytes(const Field<Bytes>& field, const char* name, const std::string& meaning)
{
    add(field.place, name, Kind::Raw, "", meaning);
}

void PartList::bytesAt(const Place& place, const char* name, const std::string& meaning)
{
    add(place, name, Kind::Raw, "", meaning);
}

void PartList::unread()
{
    if (!lastIsEmpty) {
        parts.back().isRead = false;
    }
}

void PartList::appendTo(std::vector<ExplainedPart>& target, const Place& payload,
                        const std::vector<char>& bytesOfFile) &&
{
    std::uint32_t next = payload.offset;
    ExplainedPart previous;
    previous.group = group;
    const auto fillUpTo = [&](std::uint32_t end) {
        while (next < end) {
            const Place gap{payload.group, next, end - next};
            target.push_back(fillingBehind(previous, gap, bytesOfFile));
            target.back().isRead = groupIsRead;
            next += target.back().place.length;
        }
    };
    for (ExplainedPart& part : parts) {
        fillUpTo(part.place.offset);
        next += part.place.length;
        previous = part;
        target.push_back(std::move(part));
    }
    fillUpTo(payload.offset + payload.length);
}

} // namespace mxauthor
