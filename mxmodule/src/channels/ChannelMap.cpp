#include "mxmodule/ChannelMap.h"

#include "channels/ChannelMapContent.h"
#include "channels/ChannelMapOutput.h"
#include "channels/Displacement.h"

#include <text/JsonText.h>

#include <utility>

namespace mxmodule {

namespace {

ImageArea plainArea(const ProcessImage::Area& area)
{
    return {area.data.firstByte, area.data.size, area.gaps(), area.overlaps()};
}

} // namespace

ChannelMap::Content::Content(ChannelTable made)
    : table(std::move(made)),
      image(makeProcessImage(table)),
      input(plainArea(image.input)),
      output(plainArea(image.output))
{}

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
    return content->table.channels;
}

const std::vector<Channel>& ChannelMap::withoutSymbol() const
{
    return content->table.withoutSymbol;
}

std::vector<std::size_t> ChannelMap::displaced() const
{
    return displacedChannels(content->table);
}

std::uint64_t ChannelMap::undisplacedFrom(bool input) const
{
    return mxmodule::undisplacedFrom(content->table, input);
}

std::vector<std::size_t> ChannelMap::outside() const
{
    return channelsOutside(content->table);
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
