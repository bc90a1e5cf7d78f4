#include "mxauthor/Explain.h"

#include "explain/GroupParts.h"

#include <devices/parser/mx/HexText.h>
#include <mxformat/TextTable.h>

#include <algorithm>

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

// From the first field of a record to the end of its last.
Place from(const Place& first, std::uint32_t end)
{
    return {first.group, first.offset, end - first.offset};
}

void addParameters(const ModuleView& module, std::vector<NamedPlace>& all)
{
    const auto* const block = module.content<ParameterBlock>(mxformat::group::parameterBlock);
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        const std::string what = named("parameter", parameter.record->number.value, "");
        const Place& number = parameter.record->number.place;
        all.push_back(
            {what, parameter.name, from(number, number.offset + mxformat::parameterRecordSize)});
        if (block != nullptr && parameter.value.present) {
            const Place& bytes = block->block.place;
            const mxformat::BlockField& field = parameter.value.field;
            all.push_back({"default of " + what,
                           parameter.name,
                           {bytes.group, bytes.offset + field.begin(), field.size()}});
        }
    }
}

void addChannels(const ModuleView& module, std::vector<NamedPlace>& all)
{
    for (const ModuleView::Channel& channel : module.channels()) {
        const ChannelRecord& record = *channel.record;
        const Place& last =
            record.words.empty() ? record.wordCount.place : record.words.back().place;
        all.push_back({named("channel", record.number.value, "") +
                           (channel.place.symbol.empty() ? "" : " (" + channel.place.symbol + ")"),
                       channel.name, from(record.number.place, last.end())});
    }
    const auto& names = module.contentOrNone<ChannelNames>(mxformat::group::channelNames);
    for (const ChannelName& entry : names.entries) {
        all.push_back({"name of " + named("channel", entry.channel.value, ""),
                       module.textOf(entry.textId.value),
                       from(entry.channel.place, entry.textId.place.end())});
    }
}

void addTexts(const ModuleView& module, std::vector<NamedPlace>& all)
{
    for (const TextRecord& record : module.contentOrNone<TextTable>(mxformat::group::texts).texts) {
        const Place& text = record.text.place;
        all.push_back({named("text", record.id.value, ""), record.text.value,
                       from(record.id.place, text.end() + mxformat::lineEndSize)});
    }
}

// Where the parameters, channels and texts of `module` lie, ordered by their place.
std::vector<NamedPlace> namedPlaces(const ModuleView& module)
{
    std::vector<NamedPlace> all;
    addParameters(module, all);
    addChannels(module, all);
    addTexts(module, all);
    std::stable_sort(all.begin(), all.end(), [](const NamedPlace& a, const NamedPlace& b) {
        return a.place.offset < b.place.offset;
    });
    return all;
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
