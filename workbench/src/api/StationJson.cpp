#include "api/StationJson.h"

#include <text/JsonText.h>
#include <text/Utf8.h>

#include <cstdint>
#include <string>
#include <vector>

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

// Where the plan has an entry.
struct PlannedEntry
{
    std::size_t position = 0; // from 1; 0: no module
    mxstation::ImageBytes input;
    mxstation::ImageBytes output;
};

constexpr std::uint64_t bitsOfByte = 8;

std::vector<PlannedEntry> plannedEntries(std::size_t count, const mxstation::Plan& plan)
{
    std::vector<PlannedEntry> entries(count);
    for (const mxstation::Gap& gap : plan.gaps) {
        if (gap.entry) {
            PlannedEntry& entry = entries.at(*gap.entry);
            (gap.isInput ? entry.input : entry.output) = {gap.firstBit / bitsOfByte,
                                                          gap.bits / bitsOfByte};
        }
    }
    for (const mxstation::PlannedModule& module : plan.modules) {
        entries.at(module.entry) = {module.position, module.input, module.output};
    }
    return entries;
}

text::Json extentJson(const mxstation::ImageBytes& bytes)
{
    return bytes.size == 0 ? text::Json()
                           : text::Json{{"offset", bytes.offset}, {"size", bytes.size}};
}

text::Json statedEntryJson(std::size_t index, const mxstation::Entry& entry,
                           const std::string& plannedName, const PlannedEntry& planned)
{
    return {{"index", index},
            {"position", planned.position == 0 ? text::Json() : text::Json(planned.position)},
            {"planned", {{"in", extentJson(planned.input)}, {"out", extentJson(planned.output)}}},
            {"reference", text::toUtf8(entry.reference)},
            {"name", text::toUtf8(entry.name)},
            {"plannedName", text::toUtf8(plannedName)},
            {"reserve", reserveJson(entry.reserve)},
            {"at", bytesJson(entry.at)},
            {"line", entry.place.line},
            {"parameters", text::listJson(entry.parameters, valueJson)},
            {"channels", text::listJson(entry.channels, noteJson)}};
}

} // namespace

text::Json entriesJson(const mxstation::Station& station, const mxstation::Plan& plan)
{
    const auto planned = plannedEntries(station.entries.size(), plan);
    const std::vector<std::string> names = mxstation::entryNames(station);
    text::Json list = text::Json::array();
    for (std::size_t i = 0; i < station.entries.size(); ++i) {
        list.push_back(statedEntryJson(i, station.entries[i], names[i], planned[i]));
    }
    return list;
}

} // namespace workbench
