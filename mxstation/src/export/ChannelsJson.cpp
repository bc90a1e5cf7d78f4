#include "mxstation/ChannelExport.h"

#include "export/Provenance.h"

#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxstation {

namespace {

text::Json channelJson(const Channel& channel)
{
    return {{"module", channel.module},
            {"module_name", text::toUtf8(channel.moduleName)},
            {"alias", text::toUtf8(channel.alias)},
            {"comment", text::toUtf8(channel.comment)},
            {"id", channel.id},
            {"number", channel.number},
            {"name", text::toUtf8(channel.name)},
            {"direction", channel.isInput ? "in" : "out"},
            {"symbol", channel.symbol},
            {"area", channel.isInput ? "I" : "Q"},
            {"size_letter", std::string(1, channel.kind)},
            {"byte", channel.byteAddress},
            {"bit_offset", channel.bitOffset},
            {"bit_length", channel.bitLength},
            {"mask", channel.mask}};
}

text::Json withoutSymbolJson(const ChannelWithoutSymbol& without)
{
    return {{"module", without.module},
            {"module_name", text::toUtf8(without.moduleName)},
            {"id", without.channel.id},
            {"number", without.channel.number},
            {"name", text::toUtf8(without.channel.name)},
            {"direction", without.channel.direction}};
}

text::Json exportedImageJson(const ImageBytes& image)
{
    return {{"offset", image.offset}, {"size", image.size}};
}

} // namespace

std::string channelsJson(const Plan& plan)
{
    const Provenance provenance(plan);
    text::Json json = {{"schema", text::jsonSchema("mxtool.station-channels", 1)},
                       {"station", text::toUtf8(plan.station)}};
    provenance.addTo(json);
    json["input"] = exportedImageJson(plan.input);
    json["output"] = exportedImageJson(plan.output);
    json["channels"] = text::listJson(plan.channels, channelJson);
    json["without_symbol"] = text::listJson(plan.withoutSymbol, withoutSymbolJson);
    return text::jsonText(json);
}

} // namespace mxstation
