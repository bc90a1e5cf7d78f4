#include "mxmodule/ChannelMap.h"

#include "channels/ChannelMapContent.h"
#include "channels/ChannelMapOutput.h"
#include "channels/Displacement.h"
#include "channels/FreeBits.h"

#include <text/JsonText.h>

#include <utility>

namespace mxmodule {

const ChannelMap::Content::Areas& ChannelMap::Content::areas() const
{
    std::call_once(searched, [this] { found = {areaOf(table, true), areaOf(table, false)}; });
    return found;
}

const ProcessImage& ChannelMap::Content::picture() const
{
    std::call_once(drawn, [this] { image = makeProcessImage(table); });
    return *image;
}

ChannelMap::ChannelMap(std::shared_ptr<const Content> made) : content(std::move(made)) {}

ImageBytes ChannelMap::data(bool input) const
{
    return input ? content->table.input : content->table.output;
}

const ImageArea& ChannelMap::input() const
{
    return content->areas().input;
}

const ImageArea& ChannelMap::output() const
{
    return content->areas().output;
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
    return text::jsonText(channelMapJson(content->table, content->picture()));
}

std::string ChannelMap::declarations() const
{
    return iecDeclarations(content->table);
}

std::string ChannelMap::svg() const
{
    return processImageSvg(content->picture());
}

std::string ChannelMap::drawing(bool coloured) const
{
    return processImageMap(content->picture(), coloured);
}

} // namespace mxmodule
