#include "datasheet/StationSheet.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

#include <algorithm>

namespace mxstation {

namespace {

using text::htmlText;

std::string nameHtml(const std::string& name, std::uint8_t number)
{
    return name.empty() ? fmt::format("Channel {}", number) : htmlText(name);
}

std::string bytesHtml(const StationSheet& sheet, const Channel& channel)
{
    const std::uint64_t first = channel.firstBit / 8;
    const std::uint64_t last =
        (channel.firstBit + std::max<std::uint64_t>(channel.bits, 1) - 1) / 8;
    return sheet.bytesLink({first, last - first + 1}, channel.isInput);
}

std::string bitsHtml(const Channel& channel)
{
    const std::string bits = text::counted(channel.bits, "bit");
    const std::uint64_t first = channel.firstBit % 8;
    return !channel.isBitField ? bits + (channel.isSigned ? ", signed" : ", unsigned")
           : channel.bits == 1 ? fmt::format("bit {}", first)
                               : fmt::format("{} from bit {}", bits, first);
}

// The channels of `module`, then those in no image.
void addChannels(const StationSheet& sheet, const PlannedModule& module, text::HtmlTable& table)
{
    for (const Channel& channel : sheet.plan.channels) {
        if (channel.module == module.position) {
            table.addNamed({{nameHtml(channel.name, channel.number)},
                            {htmlText(channel.alias)},
                            {channel.isInput ? "input" : "output"},
                            {"<code>" + htmlText(channel.symbol) + "</code>"},
                            {bytesHtml(sheet, channel)},
                            {bitsHtml(channel)},
                            {htmlText(channel.comment)}},
                           " id=\"" + channelId(channel) + "\"");
        }
    }
    for (const ChannelWithoutSymbol& one : sheet.plan.withoutSymbol) {
        if (one.module == module.position) {
            table.addNamed({{nameHtml(one.channel.name, one.channel.number)},
                            {""},
                            {htmlText(one.channel.direction)},
                            {"none"},
                            {"\u2013"},
                            {"\u2013"},
                            {""}});
        }
    }
}

} // namespace

std::string channelId(const Channel& channel)
{
    return fmt::format("m{}-channel-{}", channel.module, channel.id);
}

std::string channelsHtml(const StationSheet& sheet)
{
    text::HtmlTable table({"Channel", "Alias", "Direction", "Address", "Byte", "Bits", "Comment"},
                          "Channels of all modules, addresses of IEC 61131-3 in bytes");
    for (const PlannedModule& module : sheet.plan.modules) {
        if (!module.module.channels().empty()) {
            table.beginGroup(StationSheet::moduleLink(module));
            addChannels(sheet, module, table);
        }
    }
    return table.empty() ? "<p>The station has no channels.</p>\n" : table.html(" class=\"cards\"");
}

} // namespace mxstation
