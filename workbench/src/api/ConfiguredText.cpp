#include "api/ConfiguredText.h"

#include "api/FindingJson.h"

#include <mxmodule/ProductPicture.h>
#include <text/Utf8.h>

namespace workbench {

namespace {

using mxmodule::Fieldbus;

text::Json callNamesJson(const mxmodule::Module& module)
{
    text::Json names = text::Json::object();
    for (const mxmodule::Parameter& parameter : module.parameters()) {
        names["#" + parameter.id] = text::toUtf8(parameter.callName);
    }
    return names;
}

text::Json callTextsJson(const mxmodule::Module& module)
{
    text::Json texts = text::Json::object();
    for (const mxmodule::Parameter& parameter : module.parameters()) {
        text::Json& ofParameter = texts["#" + parameter.id] = text::Json::array();
        for (const mxmodule::Option& option : parameter.options) {
            ofParameter.push_back(option.callText);
        }
    }
    return texts;
}

// Adds the Modbus form, or why there is none.
void addModbus(AnswerText& answer, const mxmodule::Module& module, const std::vector<char>& image)
{
    try {
        const std::string json = module.configuration(image, Fieldbus::Modbus).json();
        answer.addText("modbus", json).add("noRegisters", nullptr);
    } catch (const mxmodule::Failure& failure) {
        answer.add("modbus", nullptr).add("noRegisters", findingJson(failure.reason()));
    }
}

text::Json sizesJson(const mxmodule::DataSizes& sizes)
{
    return {{"input", sizes.input},
            {"output", sizes.output},
            {"parameters", sizes.parameters},
            {"diagnosis", sizes.diagnosis}};
}

text::Json pictureJson(const mxmodule::Module& module)
{
    const auto picture = pictureOf(module);
    return picture ? text::Json(dataUrl(*picture)) : text::Json();
}

} // namespace

std::string configuredText(const mxmodule::Module& module, const std::vector<char>& image)
{
    AnswerText answer;
    answer.addText("raw", module.configuration(image, Fieldbus::Raw).json());
    addModbus(answer, module, image);
    return answer.add("callNames", callNamesJson(module)).text();
}

text::Json bitsJson(const mxmodule::MappedChannel& channel)
{
    return {{"firstBit", channel.firstBit}, {"bits", channel.bits}};
}

void addDescription(AnswerText& answer, const mxmodule::Module& module)
{
    const mxmodule::ChannelMap map = module.channelMap();
    answer.addText("device", module.json())
        .addText("channels", map.json())
        .add("picture", pictureJson(module))
        .add("processImage", map.svg())
        .add("sizes", sizesJson(module.sizes()))
        .add("callTexts", callTextsJson(module))
        .add("places", text::listJson(map.channels(), bitsJson));
}

} // namespace workbench
