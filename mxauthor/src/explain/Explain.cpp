#include "mxauthor/Explain.h"

#include "explain/GroupParts.h"
#include "explain/NamedPlaces.h"

#include <devices/parser/mx/HexText.h>

namespace mxauthor {

namespace {

ExplainedPart framePart(const Group& group, int index, std::uint32_t offset, const char* field,
                        unsigned value, const std::string& meaning)
{
    ExplainedPart part;
    part.place = {group.id, group.place.offset + offset, 2};
    part.group = index;
    part.field = field;
    part.kind = ExplainedPart::Kind::Number;
    part.value = std::to_string(value);
    part.meaning = meaning;
    return part;
}

void explainFramedGroup(Explanation& result, const ModuleView& module, const Group& group,
                        const std::vector<char>& bytes)
{
    const int index = static_cast<int>(result.groups.size());
    const std::string title = mxformat::groupName(group.id);
    const bool isRead = !title.empty() && module.group(group.id) == &group;
    result.groups.push_back({group.id, title, group.place, isRead});
    result.parts.push_back(framePart(group, index, 0, "id", group.id,
                                     "group " + devices::parser::mx::u16AsHex(group.id)));
    result.parts.push_back(
        framePart(group, index, 2, "length", group.place.length, "bytes, the whole group"));
    PartList parts(index, isRead);
    std::visit([&](const auto& content) { explainGroup(parts, module, content); }, group.content);
    const Place payload{group.id, group.place.offset + mxformat::groupHeaderSize,
                        group.place.length - mxformat::groupOverhead};
    std::move(parts).appendTo(result.parts, payload, bytes);
    result.parts.push_back(framePart(group, index, group.place.length - mxformat::groupChecksumSize,
                                     "checksum", group.checksum.value, "never compared"));
    result.parts.back().isRead = false;
}

void explainTail(Explanation& result, const Place& tail)
{
    if (tail.length == 0) {
        return;
    }
    ExplainedPart part;
    part.place = tail;
    part.field = "tail";
    part.meaning = result.failure.value_or("bytes after the last group");
    part.isRead = false;
    result.parts.push_back(part);
}

} // namespace

Explanation explain(const std::vector<char>& bytes)
{
    const auto [file, failure] = readWholeGroups(bytes);
    Explanation result;
    result.failure = failure;
    const ModuleView module(file);
    for (const Group& group : file.groups) {
        explainFramedGroup(result, module, group, bytes);
    }
    explainTail(result, file.tail.place);
    result.names = namedPlaces(module);
    return result;
}

} // namespace mxauthor
