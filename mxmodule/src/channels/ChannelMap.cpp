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

const ChannelMap::Content::Picture& ChannelMap::Content::picture() const
{
    std::call_once(drawn, [this] {
        ProcessImage image = makeProcessImage(table);
        ImageArea input = plainArea(image.input);
        ImageArea output = plainArea(image.output);
        drawing = {std::move(image), std::move(input), std::move(output)};
    });
    return drawing;
}

ChannelMap::ChannelMap(std::shared_ptr<const Content> made) : content(std::move(made)) {}

const ImageArea& ChannelMap::input() const
{
    return content->picture().input;
}

const ImageArea& ChannelMap::output() const
{
    return content->picture().output;
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
    return text::jsonText(channelMapJson(content->table, content->picture().image));
}

std::string ChannelMap::declarations() const
{
    return iecDeclarations(content->table);
}

std::string ChannelMap::svg() const
{
    return processImageSvg(content->picture().image);
}

std::string ChannelMap::drawing(bool coloured) const
{
    return processImageMap(content->picture().image, coloured);
}

} // namespace mxmodule
