#include "ParameterText.h"

#include <fmt/format.h>

#include <vector>

namespace mxmodule {

std::string ownerOf(const DeviceReport::Parameter& parameter)
{
    if (parameter.ofModule()) {
        return "module";
    }
    const std::string number = std::to_string(parameter.channelNumber);
    if (parameter.channelNames.empty()) {
        return number + " (no such channel)";
    }
    return fmt::format("{} {}", number, fmt::join(parameter.channelNames, ", "));
}

std::string valueDigits(const DeviceReport::Parameter& parameter)
{
    if (!parameter.converted) {
        return parameter.value;
    }
    return parameter.raw ? parameter.scale.text(*parameter.raw) : std::string();
}

std::string minimumDigits(const DeviceReport::Parameter& parameter)
{
    if (!parameter.converted) {
        return parameter.min;
    }
    return parameter.scale.text(parameter.scale.factor < 0 ? parameter.rawMax : parameter.rawMin);
}

std::string maximumDigits(const DeviceReport::Parameter& parameter)
{
    if (!parameter.converted) {
        return parameter.max;
    }
    return parameter.scale.text(parameter.scale.factor < 0 ? parameter.rawMin : parameter.rawMax);
}

std::string valueText(const DeviceReport::Parameter& parameter)
{
    if (!parameter.hasOptionList) {
        return valueDigits(parameter);
    }
    const auto* option = parameter.currentOption();
    return option != nullptr ? option->text : parameter.value + " (not in the list)";
}

bool isInRange(const DeviceReport::Parameter& parameter)
{
    if (parameter.hasOptionList) {
        return parameter.currentOption() != nullptr;
    }
    return !parameter.raw ||
           (!(*parameter.raw < parameter.rawMin) && !(parameter.rawMax < *parameter.raw));
}

std::string valueWithUnit(const DeviceReport::Parameter& parameter)
{
    std::string text = valueText(parameter);
    if (parameter.hasOptionList || text.empty()) {
        return text;
    }
    const std::string unit = parameter.unit.empty() ? "" : " " + parameter.unit;
    return text + unit +
           (isInRange(parameter) ? ""
                                 : fmt::format(" (outside {}{})", acceptedValues(parameter), unit));
}

std::string acceptedValues(const DeviceReport::Parameter& parameter)
{
    if (!parameter.hasOptionList) {
        return minimumDigits(parameter) + " to " + maximumDigits(parameter);
    }
    std::vector<std::string> options;
    for (const auto& option : parameter.options) {
        const std::string text = option.text + " = " + option.value;
        options.push_back(option.current ? "[" + text + "]" : text);
    }
    return fmt::format("{}", fmt::join(options, " | "));
}

std::string described(const DeviceReport::Parameter& parameter)
{
    const std::string owner =
        parameter.ofModule() ? " of the module" : " of channel " + ownerOf(parameter);
    const auto span = [](const char* what, unsigned first, unsigned count) {
        return count < 2 ? fmt::format("{} {}", what, first)
                         : fmt::format("{}s {} to {}", what, first, first + count - 1);
    };
    const std::string bits = parameter.bitLength() == 0
                                 ? ""
                                 : " " + span("bit", parameter.bitOffset(), parameter.bitLength());
    const std::string bytes = span("byte", parameter.field.begin(), parameter.field.size());
    return fmt::format("parameter \"{}\"{} (#{}, {}{})", parameter.name, owner, parameter.id, bytes,
                       bits);
}

} // namespace mxmodule
