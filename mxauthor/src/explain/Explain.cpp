#include "mxauthor/Explain.h"

#include "explain/GroupParts.h"
#include "explain/NamedPlaces.h"

#include <devices/parser/mx/HexText.h>

#include <map>

namespace mxauthor {

namespace {

constexpr std::uint32_t headerSize = 4;
constexpr std::uint32_t overhead = 6;

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
    const std::string title = groupTitle(group.id);
    const bool isRead = !title.empty() && module.group(group.id) == &group;
    result.groups.push_back({group.id, title, group.place, isRead});
    result.parts.push_back(framePart(group, index, 0, "id", group.id,
                                     "group " + devices::parser::mx::u16AsHex(group.id)));
    result.parts.push_back(
        framePart(group, index, 2, "length", group.place.length, "bytes, the whole group"));
    PartList parts(index, isRead);
    std::visit([&](const auto& content) { explainGroup(parts, module, content); }, group.content);
    const Place payload{group.id, group.place.offset + headerSize, group.place.length - overhead};
    std::move(parts).appendTo(result.parts, payload, bytes);
    result.parts.push_back(framePart(group, index, group.place.length - 2, "checksum",
                                     group.checksum.value, "never compared"));
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

std::string groupTitle(std::uint16_t id)
{
    static const std::map<std::uint16_t, const char*> titles = {
        {0x0000, "header"},     {0x0001, "module identity"}, {0x0010, "parameter block"},
        {0x0011, "data sizes"}, {0x0020, "catalogue"},       {0x0040, "component"},
        {0x20C0, "parameters"}, {0x20C1, "option lists"},    {0x20C2, "conversions"},
        {0x20D0, "channels"},   {0x20D3, "texts"},           {0x20D7, "channel names"},
        {0x20F0, "extension"},  {0x20F1, "product image"},
    };
    const auto found = titles.find(id);
    return found == titles.end() ? "" : found->second;
}

} // namespace mxauthor
