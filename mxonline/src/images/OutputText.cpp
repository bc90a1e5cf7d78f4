#include "mxonline/OutputSetting.h"
#include "mxonline/TimeText.h"

#include <text/Counted.h>
#include <text/TextTable.h>

#include <algorithm>

namespace mxonline {

namespace {

std::string withHex(const ChannelValue& value)
{
    return value.hex.empty() ? value.text : value.text + " (" + value.hex + ")";
}

std::string staysSo(std::size_t count)
{
    return count == 1 ? " stays so until it is set again" : " stay so until they are set again";
}

} // namespace

bool OutputReport::isDone() const
{
    return findings.empty() && std::all_of(outputs.begin(), outputs.end(), [](const auto& output) {
               return output.now.has_value();
           });
}

std::string outputsText(const std::vector<SetOutput>& outputs)
{
    text::TextTable table({"Position", "Module", "Channel", "Alias", "Symbol", "Before", "After"});
    for (const SetOutput& output : outputs) {
        const NamedChannel& channel = output.channel;
        table.add({std::to_string(channel.module), channel.moduleName, channel.channel,
                   channel.alias, channel.symbol, withHex(output.before), withHex(output.wanted)});
    }
    return table.text();
}

std::string outputsQuestion(std::size_t count, std::optional<std::chrono::milliseconds> time)
{
    const std::string outputs = "Set " + text::counted(count, "output");
    return time ? outputs + " for " + timeText(*time) + "?"
                : outputs + "? " + (count == 1 ? "It" : "They") + staysSo(count) + ".";
}

std::string writtenText(const OutputReport& report, std::optional<std::chrono::milliseconds> time)
{
    if (!report.isDone()) {
        return "";
    }
    const std::string outputs = text::counted(report.outputs.size(), "output");
    const std::string pronoun = report.outputs.size() == 1 ? "it" : "they";
    return outputs + " set and read back; " +
           (time ? "for " + timeText(*time) : pronoun + staysSo(report.outputs.size())) + "\n";
}

std::string restoredText(const OutputReport& report)
{
    if (!report.isDone() || report.outputs.empty()) {
        return "";
    }
    return text::counted(report.outputs.size(), "output") +
           (report.outputs.size() == 1 ? " is" : " are") + " again as before\n";
}

} // namespace mxonline
