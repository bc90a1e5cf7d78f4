#include "mxonline/SampleText.h"

#include "channels/ValueText.h"
#include "report/UtcTime.h"

#include <fmt/format.h>
#include <text/Csv.h>
#include <text/JsonText.h>
#include <text/ShownText.h>
#include <text/TextTable.h>

#include <sstream>

namespace mxonline {

namespace {

std::string quoted(const std::string& text)
{
    return text::harmlessJson(text::Json(text).dump());
}

std::string valueJson(const ChannelValue& value)
{
    return isNumber(value) ? value.text : quoted(value.text);
}

void addMember(const std::string& member, std::string& list)
{
    list += (list.empty() ? "" : ",") + member;
}

} // namespace

SampleTable sampleTable(const std::vector<NamedChannel>& channels, const Sample& sample)
{
    text::TextTable table({"Position", "Module", "Channel", "Alias", "Symbol", "Value", "Hex", ""});
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const NamedChannel& channel = channels[i];
        const ChannelValue& value = sample.values[i];
        table.add({std::to_string(channel.module), channel.moduleName, channel.channel,
                   channel.alias, channel.symbol, value.text, value.hex,
                   sample.isChanged[i] ? "*" : ""});
    }
    SampleTable lines;
    lines.time = utcTime(sample.time);
    std::istringstream text(table.text());
    std::getline(text, lines.heading);
    for (std::string line; std::getline(text, line);) {
        lines.rows.push_back(line);
    }
    return lines;
}

std::string sampleText(const std::vector<NamedChannel>& channels, const Sample& sample)
{
    const SampleTable table = sampleTable(channels, sample);
    std::string text = table.time + "\n" + table.heading + "\n";
    for (const std::string& row : table.rows) {
        text += row + "\n";
    }
    return text;
}

std::string changesText(const std::vector<NamedChannel>& channels, const Sample& sample)
{
    std::string text;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (sample.isChanged[i]) {
            text += fmt::format("{}  {}  {}\n", utcTime(sample.time),
                                text::forTerminal(channels[i].name), sample.values[i].text);
        }
    }
    return text;
}

std::string sampleCsvHeading(const std::vector<NamedChannel>& channels)
{
    text::CsvRow row = {"time"};
    for (const NamedChannel& channel : channels) {
        row.push_back(channel.name);
    }
    return text::csvLine(row);
}

std::string sampleCsv(const Sample& sample)
{
    text::CsvRow row = {utcTime(sample.time)};
    for (const ChannelValue& value : sample.values) {
        row.push_back(value.text);
    }
    return text::csvLine(row);
}

// Put together from its members: adding them one by one to an object compares all of their names.
std::string sampleJson(const std::vector<NamedChannel>& channels, const Sample& sample)
{
    std::string values;
    std::string changed;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::string name = quoted(channels[i].name);
        addMember(name + ":" + valueJson(sample.values[i]), values);
        if (sample.isChanged[i]) {
            addMember(name, changed);
        }
    }
    return fmt::format("{{\"schema\":{},\"time\":\"{}\",\"values\":{{{}}},\"changed\":[{}]}}\n",
                       text::jsonSchema("mxtool.sample", 1).dump(), utcTime(sample.time), values,
                       changed);
}

} // namespace mxonline
