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

std::string writtenText(const OutputReport& report, std::optional<std::chrono::milliseconds> time)
{
    if (!report.isDone()) {
        return "";
    }
    const bool isOne = report.outputs.size() == 1;
    const std::string outputs = text::counted(report.outputs.size(), "output");
    return outputs + " set and read back; " +
           (time    ? "for " + timeText(*time)
            : isOne ? "it stays so until it is set again"
                    : "they stay so until they are set again") +
           "\n";
}

std::string restoredText(const OutputReport& report)
{
    if (!report.isDone()) {
        return "";
    }
    return text::counted(report.outputs.size(), "output") +
           (report.outputs.size() == 1 ? " is" : " are") + " again as before\n";
}

} // namespace mxonline
