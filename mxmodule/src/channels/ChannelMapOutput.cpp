#include "channels/ChannelMapOutput.h"

#include <text/Csv.h>
#include <text/JsonText.h>
#include <text/TextTable.h>

#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxmodule {

namespace {

const char* directionOf(const MappedChannel& channel)
{
    return channel.isInput ? "in" : "out";
}

text::Json channelJson(const MappedChannel& channel)
{
    return {{"id", channel.id},
            {"number", channel.number},
            {"name", channel.name},
            {"direction", directionOf(channel)},
            {"symbol", channel.symbol},
            {"area", channel.isInput ? "I" : "Q"},
            {"size_letter", std::string(1, channel.kind)},
            {"byte", channel.byteAddress},
            {"bit_offset", channel.bitOffset},
            {"bit_length", channel.bitLength},
            {"mask", channel.mask}};
}

text::Json withoutSymbolJson(const Channel& channel)
{
    return {{"id", channel.id},
            {"number", channel.number},
            {"name", channel.name},
            {"direction", channel.direction}};
}

text::Json runJson(const BitRun& run)
{
    return {{"byte", run.firstBit / 8}, {"bit", run.firstBit % 8}, {"bits", run.bits}};
}

text::Json areaJson(const ProcessImage::Area& area)
{
    return {{"first_byte", area.data.firstByte},
            {"size", area.data.size},
            {"free", text::listJson(area.gaps, runJson)},
            {"overlapping", text::listJson(area.overlaps, runJson)}};
}

} // namespace

std::string channelMapText(const ChannelTable& map)
{
    text::TextTable table(
        {"Channel", "Name", "Direction", "Symbol", "Byte", "Bit", "Bits", "Mask"});
    for (const auto& channel : map.channels) {
        table.add({std::to_string(channel.number), channel.name, directionOf(channel),
                   channel.symbol, std::to_string(channel.byteAddress),
                   std::to_string(channel.bitOffset), std::to_string(channel.bitLength),
                   fmt::format("{:#04x}", channel.mask)});
    }
    return table.text();
}

std::string channelMapCsv(const ChannelTable& map, const CsvStyle& style)
{
    std::vector<text::CsvRow> rows = {{"number", "name", "direction", "symbol", "size_letter",
                                       "byte", "bit_offset", "bit_length", "mask"}};
    for (const auto& channel : map.channels) {
        rows.push_back({std::to_string(channel.number), channel.name, directionOf(channel),
                        channel.symbol, std::string(1, channel.kind),
                        std::to_string(channel.byteAddress), std::to_string(channel.bitOffset),
                        std::to_string(channel.bitLength), std::to_string(channel.mask)});
    }
    return text::csvText(rows, style.separator, style.byteOrderMark);
}

text::Json channelMapJson(const ChannelTable& map, const ProcessImage& image)
{
    return {{"schema", text::jsonSchema("mxtool.channels", 1)},
            {"label", text::toUtf8(map.label)},
            {"device_type_id", map.deviceTypeId},
            {"input", areaJson(image.input)},
            {"output", areaJson(image.output)},
            {"channels", text::listJson(map.channels, channelJson)},
            {"without_symbol", text::listJson(map.withoutSymbol, withoutSymbolJson)}};
}

} // namespace mxmodule
