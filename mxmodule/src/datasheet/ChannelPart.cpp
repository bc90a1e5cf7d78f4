#include "channels/ChannelTable.h"
#include "channels/ProcessImage.h"
#include "datasheet/DatasheetModule.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

#include <algorithm>

namespace mxmodule {

namespace {

using text::htmlText;

// A part of a channel in a byte of the picture.
text::HtmlBits pieceBits(const ProcessImage::Piece& piece, const ProcessImage::Channel& channel,
                         const std::string& id)
{
    const std::string more = piece.byte == 0 ? channel.symbol : fmt::format("+{}", piece.byte);
    return {piece.highBit, piece.lowBit,
            text::htmlLink(id, htmlText(channel.name.empty() ? channel.symbol : channel.name)) +
                " <span class=\"faint\">" + htmlText(more) + "</span>",
            fmt::format("c{}", channel.colour), piece.lane};
}

// `ids` are the identifiers of the channels of `area`.
text::HtmlByte rowByte(const ProcessImage::Row& row, const ProcessImage::Area& area,
                       const std::vector<std::string>& ids)
{
    text::HtmlByte byte;
    byte.number = row.firstByte;
    byte.lanes = row.lanes;
    byte.kind = row.inData ? "" : "outside";
    for (const ProcessImage::Piece& piece : row.pieces) {
        byte.bits.push_back(pieceBits(piece, area.channels[piece.channel], ids[piece.channel]));
    }
    std::stable_sort(
        byte.bits.begin(), byte.bits.end(),
        [](const text::HtmlBits& a, const text::HtmlBits& b) { return a.highBit > b.highBit; });
    return byte;
}

void addRow(const ProcessImage::Row& row, const ProcessImage::Area& area,
            const std::vector<std::string>& ids, text::HtmlBitTable& table)
{
    if (row.count > 1) {
        table.addRun(row.firstByte, row.count,
                     row.inData ? "no channel" : "outside the data of the module");
    } else {
        table.add(rowByte(row, area, ids));
    }
    if (row.hidden != 0) {
        table.addRun(row.firstByte, 1,
                     "and " + text::counted(row.hidden, "channel") + " more, see the list");
    }
}

std::string bytesOf(const MappedChannel& channel, const text::HtmlBitTable& image)
{
    const std::uint64_t first = channel.firstBit / 8;
    const std::uint64_t last =
        (channel.firstBit + std::max<std::uint64_t>(channel.bits, 1) - 1) / 8;
    return image.link(first, last - first + 1);
}

std::string bitsText(const MappedChannel& channel)
{
    const std::uint64_t first = channel.firstBit % 8;
    if (!channel.isBitField) {
        return text::counted(channel.bits, "bit");
    }
    return channel.bits == 1
               ? fmt::format("bit {}", first)
               : fmt::format("{} from bit {}", text::counted(channel.bits, "bit"), first);
}

const char* signOf(const MappedChannel& channel)
{
    return channel.isBitField ? "bits" : channel.isSigned ? "signed" : "unsigned";
}

std::string channelName(const std::string& name, std::uint8_t number)
{
    return name.empty() ? fmt::format("Channel {}", number) : htmlText(name);
}

void addChannels(const DatasheetModule& module, const ChannelTable& map,
                 const text::HtmlBitTable& inputs, const text::HtmlBitTable& outputs,
                 text::HtmlTable& table)
{
    for (const MappedChannel& channel : map.channels) {
        const std::string id = " id=\"" + module.channelId(channel.id) + "\"";
        table.addNamed({{channelName(channel.name, channel.number)},
                        {std::to_string(channel.number)},
                        {channel.isInput ? "input" : "output"},
                        {"<code>" + htmlText(channel.symbol) + "</code>"},
                        {bytesOf(channel, channel.isInput ? inputs : outputs)},
                        {bitsText(channel)},
                        {signOf(channel)}},
                       id);
    }
    for (const auto& channel : map.withoutSymbol) {
        table.addNamed({{channelName(channel.name, channel.number)},
                        {std::to_string(channel.number)},
                        {htmlText(channel.direction)},
                        {"none"},
                        {"\u2013"},
                        {"\u2013"},
                        {"\u2013"}},
                       " id=\"" + module.channelId(channel.id) + "\"");
    }
}

std::string pictureHtml(const text::HtmlBitTable& inputs, const text::HtmlBitTable& outputs)
{
    if (inputs.empty() && outputs.empty()) {
        return "<p>The module has no process data.</p>\n";
    }
    return "<div class=\"images\">\n" + (inputs.empty() ? "" : inputs.html()) +
           (outputs.empty() ? "" : outputs.html()) + "</div>\n";
}

text::HtmlBitTable tableOf(const ProcessImage::Area& area, const DatasheetModule& module,
                           const ChannelTable& map, bool isInput)
{
    std::vector<std::string> ids;
    for (const MappedChannel& channel : map.channels) {
        if (channel.isInput == isInput) {
            ids.push_back(module.channelId(channel.id));
        }
    }
    text::HtmlBitTable table(
        fmt::format("{} image: {}", isInput ? "Input" : "Output", dataText(area.data)),
        module.id(isInput ? "in-" : "out-"));
    for (const ProcessImage::Row& row : area.rows) {
        addRow(row, area, ids, table);
    }
    return table;
}

} // namespace

std::string channelsHtml(const DatasheetModule& module)
{
    const ChannelTable map = makeChannelTable(module.translated(), nullptr);
    const ProcessImage image = makeProcessImage(map);
    const text::HtmlBitTable inputs = tableOf(image.input, module, map, true);
    const text::HtmlBitTable outputs = tableOf(image.output, module, map, false);
    text::HtmlTable table({"Channel", "Number", "Direction", "Address", "Byte", "Bits", "Sign"},
                          "Channels, addresses of IEC 61131-3 in bytes");
    addChannels(module, map, inputs, outputs, table);
    return module.heading("image", "Process image") + pictureHtml(inputs, outputs) +
           module.heading("channels", "Channels") +
           (table.empty() ? "<p>The module has no channels.</p>\n"
                          : table.html(" class=\"cards\""));
}

} // namespace mxmodule
