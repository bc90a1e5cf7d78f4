#include "catalogue/ModuleContent.h"

#include "ParameterText.h"

#include <text/ShownText.h>

namespace mxmodule {

namespace {

using devices::database::ModuleContent;

ModuleContent::Channel channelOf(const DeviceReport::Channel& channel)
{
    return {channel.number, text::forTerminal(channel.name), channel.direction, channel.sizeLetter,
            channel.symbol};
}

ModuleContent::Parameter parameterOf(const DeviceReport::Parameter& parameter)
{
    ModuleContent::Parameter content;
    content.name = text::forTerminal(parameter.name);
    if (!parameter.ofModule()) {
        content.channel = parameter.channelNumber;
    }
    content.widthBits = parameter.field.bits();
    content.defaultValue = text::forTerminal(valueText(parameter));
    content.minimum = text::forTerminal(minimumDigits(parameter));
    content.maximum = text::forTerminal(maximumDigits(parameter));
    content.unit = text::forTerminal(parameter.unit);
    for (const DeviceReport::Option& option : parameter.options) {
        content.options.push_back(
            {text::forTerminal(option.text), text::forTerminal(option.value)});
    }
    return content;
}

} // namespace

ModuleContent catalogueContent(const DeviceReport& device)
{
    ModuleContent content;
    content.label = text::forTerminal(device.label);
    content.orderCode = text::forTerminal(device.property("brandOrderCode"));
    for (const DeviceReport::Channel& channel : device.channels) {
        content.channels.push_back(channelOf(channel));
    }
    for (const DeviceReport::Parameter& parameter : device.parameters) {
        content.parameters.push_back(parameterOf(parameter));
    }
    return content;
}

} // namespace mxmodule
