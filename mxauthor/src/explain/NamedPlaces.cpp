#include "explain/NamedPlaces.h"

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::uint32_t lineEndSize = 2;

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
    const auto* const names = module.content<ChannelNames>(mxformat::group::channelNames);
    for (std::size_t i = 0; names != nullptr && i < names->entries.size(); ++i) {
        const ChannelName& entry = names->entries[i];
        all.push_back({"name of " + named("channel", entry.channel.value, ""),
                       module.textOf(entry.textId.value),
                       from(entry.channel.place, entry.textId.place.end())});
    }
}

void addTexts(const ModuleView& module, std::vector<NamedPlace>& all)
{
    const auto* const table = module.content<TextTable>(mxformat::group::texts);
    for (std::size_t i = 0; table != nullptr && i < table->texts.size(); ++i) {
        const TextRecord& record = table->texts[i];
        const Place& text = record.text.place;
        all.push_back({named("text", record.id.value, ""), record.text.value,
                       from(record.id.place, text.end() + lineEndSize)});
    }
}

} // namespace

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

} // namespace mxauthor
