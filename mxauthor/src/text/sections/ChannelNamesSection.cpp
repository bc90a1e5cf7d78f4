#include "Sections.h"

namespace mxauthor {

namespace {

std::string nameLine(const ChannelName& entry, const DumpContext& context)
{
    return FlowMapping()
        .add("channel", std::to_string(entry.channel.value))
        .add("name", context.text(entry.textId.value))
        .text();
}

ChannelName readName(const YAML::Node& node, BuildContext& context)
{
    const Section section(node, "channelName", context.errors);
    context.records[mxformat::group::channelNames].push_back(section.origin());
    ChannelName entry;
    section.require("channel");
    entry.channel = section.byte("channel", 0);
    if (const auto name = section.require("name")) {
        entry.textId = readTextId(*name, context);
    }
    return entry;
}

} // namespace

std::optional<std::vector<std::optional<std::uint16_t>>> namesAtChannels(const DumpContext& context)
{
    const auto* names = context.group<ChannelNames>(mxformat::group::channelNames);
    const auto* channels = context.group<Channels>(mxformat::group::channels);
    if (names == nullptr || channels == nullptr || names->entries.empty()) {
        return std::nullopt;
    }
    std::vector<std::optional<std::uint16_t>> ids;
    auto next = names->entries.begin();
    for (const ChannelRecord& record : channels->records) {
        const bool named =
            next != names->entries.end() && next->channel.value == record.number.value;
        ids.push_back(named ? std::optional((next++)->textId.value) : std::nullopt);
    }
    return next == names->entries.end() ? std::optional(ids) : std::nullopt;
}

std::string dumpChannelNames(const DumpContext& context)
{
    const auto* group = context.group<ChannelNames>(mxformat::group::channelNames);
    if (group == nullptr || namesAtChannels(context)) {
        return "";
    }
    if (group->entries.empty()) {
        return "channelNames: []\n";
    }
    std::string text = "channelNames:\n";
    for (const ChannelName& entry : group->entries) {
        text += "  - " + nameLine(entry, context) + "\n";
    }
    return text;
}

void buildChannelNames(const std::optional<YAML::Node>& node, BuildContext& context)
{
    ChannelNames group;
    group.entries = context.channelNames;
    if (!node) {
        if (!group.entries.empty()) {
            context.setGroup(mxformat::group::channelNames, std::move(group),
                             context.marks[mxformat::group::channels]);
        }
        return;
    }
    if (!group.entries.empty()) {
        context.errors.add(*node, "the channels state their names already");
    }
    group.entries.clear();
    context.records[mxformat::group::channelNames].clear();
    for (const YAML::Node& item : readSequence(*node, context.errors)) {
        group.entries.push_back(readName(item, context));
    }
    context.setGroup(mxformat::group::channelNames, std::move(group), *node);
}

} // namespace mxauthor
