#include "channels/ChannelMapOutput.h"

#include "Csv.h"
#include "TextTable.h"

#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

Json channelJson(const ChannelMap::Channel& channel)
{
    return {{"id", channel.id},
            {"number", channel.number},
            {"name", text::toUtf8(channel.name)},
            {"direction", channel.direction()},
            {"symbol", channel.symbol},
            {"area", std::string(1, channel.area)},
            {"size_letter", std::string(1, channel.sizeLetter)},
            {"byte", channel.byteAddress},
            {"bit_offset", channel.bitOffset},
            {"bit_length", channel.bitLength},
            {"mask", channel.mask}};
}

Json withoutSymbolJson(const DeviceReport::Channel& channel)
{
    return {{"id", channel.id},
            {"number", channel.number},
            {"name", text::toUtf8(channel.name)},
            {"direction", channel.direction}};
}

Json runJson(const ProcessImage::BitRun& run)
{
    return {{"byte", run.firstBit / 8}, {"bit", run.firstBit % 8}, {"bits", run.bits}};
}

Json areaJson(const ProcessImage::Area& area)
{
    return {{"first_byte", area.data.firstByte},
            {"size", area.data.size},
            {"free", listJson(area.gaps(), runJson)},
            {"overlapping", listJson(area.overlaps(), runJson)}};
}

} // namespace

std::string channelMapText(const ChannelMap& map)
{
    TextTable table({"Channel", "Name", "Direction", "Symbol", "Byte", "Bit", "Bits", "Mask"});
    for (const auto& channel : map.channels) {
        table.add({std::to_string(channel.number), channel.name, channel.direction(),
                   channel.symbol, std::to_string(channel.byteAddress),
                   std::to_string(channel.bitOffset), std::to_string(channel.bitLength),
                   fmt::format("{:#04x}", channel.mask)});
    }
    return table.text();
}

std::string channelMapCsv(const ChannelMap& map, const CsvStyle& style)
{
    std::vector<CsvRow> rows = {{"number", "name", "direction", "symbol", "size_letter", "byte",
                                 "bit_offset", "bit_length", "mask"}};
    for (const auto& channel : map.channels) {
        rows.push_back({std::to_string(channel.number), channel.name, channel.direction(),
                        channel.symbol, std::string(1, channel.sizeLetter),
                        std::to_string(channel.byteAddress), std::to_string(channel.bitOffset),
                        std::to_string(channel.bitLength), std::to_string(channel.mask)});
    }
    return csvText(rows, style);
}

Json channelMapJson(const ChannelMap& map, const ProcessImage& image)
{
    return {{"schema", jsonSchema("mxtool.channels", 1)},
            {"label", text::toUtf8(map.label)},
            {"device_type_id", map.deviceTypeId},
            {"input", areaJson(image.input)},
            {"output", areaJson(image.output)},
            {"channels", listJson(map.channels, channelJson)},
            {"without_symbol", listJson(map.withoutSymbol, withoutSymbolJson)}};
}

} // namespace mxtool
