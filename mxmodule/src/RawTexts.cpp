#include "PlainValues.h"

#include <text/Hexadecimal.h>
#include <text/JsonText.h>

namespace mxmodule {

namespace {

RawParameterTexts rawParameterTexts(const DeviceReport::Parameter& parameter)
{
    RawParameterTexts texts{parameter.name, parameter.unit, {}};
    for (const DeviceReport::Option& option : parameter.options) {
        texts.options.push_back(option.text);
    }
    return texts;
}

std::string hexOf(const std::string& text)
{
    return text::hexOfBytes(text.data(), text.size(), "");
}

text::Json hexOfEach(const std::vector<std::string>& texts)
{
    return text::listJson(texts, hexOf);
}

text::Json rawParameterJson(const RawParameterTexts& texts)
{
    return {{"name", hexOf(texts.name)},
            {"unit", hexOf(texts.unit)},
            {"options", hexOfEach(texts.options)}};
}

} // namespace

RawTexts rawTexts(const DeviceReport& device)
{
    RawTexts texts;
    texts.label = device.label;
    for (const DeviceReport::Property& property : device.properties) {
        texts.properties.push_back(property.value);
    }
    for (const DeviceReport::Channel& channel : device.channels) {
        texts.channels.push_back(channel.name);
    }
    for (const DeviceReport::Parameter& parameter : device.parameters) {
        texts.parameters.push_back(rawParameterTexts(parameter));
    }
    return texts;
}

std::string RawTexts::json() const
{
    return text::jsonText({{"schema", text::jsonSchema("mxmodule.raw-texts", 1)},
                           {"label", hexOf(label)},
                           {"properties", hexOfEach(properties)},
                           {"channels", hexOfEach(channels)},
                           {"parameters", text::listJson(parameters, rawParameterJson)}});
}

} // namespace mxmodule
