#include "channels/ValueText.h"
#include "images/ChannelJson.h"

#include <mxmodule/c/CallFromC.h>
#include <mxonline/OutputSetting.h>

namespace mxonline {

namespace {

// The text of a number is that of JSON: signed where the channel is.
text::Json outputValueJson(const ChannelValue& value)
{
    return isNumber(value) ? text::Json::parse(value.text) : text::Json(value.text);
}

text::Json setOutputJson(const SetOutput& output)
{
    text::Json json = channelJson(output.channel);
    json["before"] = outputValueJson(output.before);
    json["wanted"] = outputValueJson(output.wanted);
    json["now"] = output.now ? outputValueJson(*output.now) : text::Json();
    return json;
}

// libmxmodule gives findings as a text of their own.
text::Json listOf(const std::vector<mxmodule::Finding>& findings)
{
    return text::Json::parse(mxmodule::findingsJson(findings))["findings"];
}

std::string outputsJsonText(const text::Json& done, const OutputReport& report)
{
    return text::jsonText({{"schema", text::jsonSchema("mxonline.outputs", 1)},
                           {"done", done},
                           {"outputs", text::listJson(report.outputs, setOutputJson)},
                           {"findings", listOf(report.findings)}});
}

} // namespace

std::string outputsJson(const std::vector<SetOutput>& outputs)
{
    return outputsJsonText({}, {outputs, {}});
}

std::string outputsJson(const OutputReport& report)
{
    return outputsJsonText(report.isDone(), report);
}

} // namespace mxonline
