#include "images/ChannelJson.h"

#include <mxonline/SampleText.h>
#include <text/Utf8.h>

namespace mxonline {

text::Json channelJson(const NamedChannel& channel)
{
    return {{"name", text::toUtf8(channel.name)},
            {"module", channel.module},
            {"module_name", text::toUtf8(channel.moduleName)},
            {"channel", text::toUtf8(channel.channel)},
            {"alias", text::toUtf8(channel.alias)},
            {"symbol", channel.symbol}};
}

std::string channelsJson(const std::vector<NamedChannel>& channels)
{
    return text::jsonText({{"schema", text::jsonSchema("mxonline.channels", 1)},
                           {"channels", text::listJson(channels, channelJson)}});
}

} // namespace mxonline
