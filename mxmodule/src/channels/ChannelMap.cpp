#include "mxmodule/ChannelMap.h"

#include "PlainValues.h"
#include "channels/ChannelMapContent.h"
#include "channels/ChannelMapOutput.h"

#include <text/JsonText.h>
#include <text/Utf8.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mxmodule {

namespace {

MappedChannel plainChannel(const ChannelTable::Channel& channel)
{
    return {channel.id,        channel.number,     text::toUtf8(channel.name), channel.isInput(),
            channel.symbol,    channel.sizeLetter, channel.byteAddress,        channel.bitOffset,
            channel.bitLength, channel.mask,       channel.isSigned,           channel.firstBit(),
            channel.bits()};
}

ImageArea plainArea(const ProcessImage::Area& area)
{
    return {area.data.firstByte, area.data.size, area.gaps(), area.overlaps()};
}

} // namespace

ChannelMap::Content::Content(ChannelTable made)
    : table(std::move(made)),
      image(makeProcessImage(table)),
      input(plainArea(image.input)),
      output(plainArea(image.output)),
      withoutSymbol(plainChannels(table.withoutSymbol))
{
    std::transform(table.channels.begin(), table.channels.end(), std::back_inserter(channels),
                   [](const ChannelTable::Channel& channel) { return plainChannel(channel); });
}

ChannelMap::ChannelMap(std::shared_ptr<const Content> made) : content(std::move(made)) {}

const ImageArea& ChannelMap::input() const
{
    return content->input;
}

const ImageArea& ChannelMap::output() const
{
    return content->output;
}

const std::vector<MappedChannel>& ChannelMap::channels() const
{
    return content->channels;
}

const std::vector<Channel>& ChannelMap::withoutSymbol() const
{
    return content->withoutSymbol;
}

std::string ChannelMap::text() const
{
    return channelMapText(content->table);
}

std::string ChannelMap::csv(const CsvStyle& style) const
{
    return channelMapCsv(content->table, style);
}

std::string ChannelMap::json() const
{
    return text::jsonText(channelMapJson(content->table, content->image));
}

std::string ChannelMap::declarations() const
{
    return iecDeclarations(content->table);
}

std::string ChannelMap::svg() const
{
    return processImageSvg(content->image);
}

std::string ChannelMap::drawing(bool coloured) const
{
    return processImageMap(content->image, coloured);
}

} // namespace mxmodule
