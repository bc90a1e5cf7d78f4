#include "api/StationJson.h"

#include <text/JsonText.h>
#include <text/Utf8.h>

namespace workbench {

namespace {

text::Json byteJson(const std::optional<mxstation::StatedByte>& byte)
{
    return byte ? text::Json(byte->value) : text::Json();
}

text::Json bytesJson(const mxstation::StatedBytes& bytes)
{
    return {{"in", byteJson(bytes.input)}, {"out", byteJson(bytes.output)}};
}

text::Json reserveJson(const std::optional<mxstation::Reserve>& reserve)
{
    if (!reserve) {
        return {};
    }
    text::Json json = bytesJson(reserve->size);
    json["name"] = text::toUtf8(reserve->name);
    return json;
}

text::Json valueJson(const mxstation::StatedValue& value)
{
    return {{"name", text::toUtf8(value.name)}, {"value", text::toUtf8(value.value)}};
}

text::Json noteJson(const mxstation::ChannelNote& note)
{
    return {{"channel", text::toUtf8(note.channel)},
            {"alias", text::toUtf8(note.alias)},
            {"comment", text::toUtf8(note.comment)}};
}

text::Json positionJson(const mxstation::Plan& plan, std::size_t entry)
{
    for (const mxstation::PlannedModule& module : plan.modules) {
        if (module.entry == entry) {
            return module.position;
        }
    }
    return {};
}

} // namespace

text::Json entriesJson(const mxstation::Station& station, const mxstation::Plan& plan)
{
    text::Json list = text::Json::array();
    for (std::size_t i = 0; i < station.entries.size(); ++i) {
        const mxstation::Entry& entry = station.entries[i];
        list.push_back({{"index", i},
                        {"position", positionJson(plan, i)},
                        {"reference", text::toUtf8(entry.reference)},
                        {"name", text::toUtf8(entry.name)},
                        {"reserve", reserveJson(entry.reserve)},
                        {"at", bytesJson(entry.at)},
                        {"line", entry.place.line},
                        {"parameters", text::listJson(entry.parameters, valueJson)},
                        {"channels", text::listJson(entry.channels, noteJson)}});
    }
    return list;
}

} // namespace workbench
