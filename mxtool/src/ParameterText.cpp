#include "ParameterText.h"

#include <fmt/format.h>

#include <charconv>
#include <optional>
#include <vector>

namespace mxtool {

namespace {

// A long double holds every 64-bit integer.
std::optional<long double> numberOf(const std::string& text)
{
    long double number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && !text.empty() ? std::optional(number) : std::nullopt;
}

} // namespace

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

std::string valueText(const DeviceReport::Parameter& parameter)
{
    if (!parameter.hasOptionList) {
        return parameter.value;
    }
    const auto* option = parameter.currentOption();
    return option != nullptr ? option->text : parameter.value + " (not in the list)";
}

bool isInRange(const DeviceReport::Parameter& parameter)
{
    if (parameter.hasOptionList) {
        return parameter.currentOption() != nullptr;
    }
    const auto value = numberOf(parameter.value);
    const auto low = numberOf(parameter.min);
    const auto high = numberOf(parameter.max);
    return !value || ((!low || *low <= *value) && (!high || *value <= *high));
}

std::string valueWithUnit(const DeviceReport::Parameter& parameter)
{
    if (parameter.hasOptionList) {
        return valueText(parameter);
    }
    const std::string unit = parameter.unit.empty() ? "" : " " + parameter.unit;
    return valueText(parameter) + unit +
           (isInRange(parameter)
                ? ""
                : fmt::format(" (outside {} to {}{})", parameter.min, parameter.max, unit));
}

std::string acceptedValues(const DeviceReport::Parameter& parameter)
{
    if (!parameter.hasOptionList) {
        return parameter.min + " to " + parameter.max;
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
    const std::string bits =
        parameter.bitLength == 0 ? "" : " " + span("bit", parameter.bitOffset, parameter.bitLength);
    const std::string bytes = span("byte", parameter.byteOffset, parameter.dataSize);
    return fmt::format("parameter \"{}\"{} (#{}, {}{})", parameter.name, owner, parameter.id, bytes,
                       bits);
}

} // namespace mxtool
