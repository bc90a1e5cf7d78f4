#include "configuration/ConfigurationOutput.h"

#include "DeviceJson.h"
#include "InvalidInput.h"
#include "ParameterText.h"
#include "ValuesComment.h"
#include "configuration/AcceptedValue.h"
#include "configuration/ParameterNames.h"

#include <text/ShownText.h>
#include <text/Utf8.h>
#include <text/YamlScalar.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxmodule {

namespace {

using DeviceParameter = DeviceReport::Parameter;
using Parameters = std::vector<const DeviceParameter*>;

// The value in a form that is read back: an option by its text if that is unambiguous.
std::string valueInCalls(const DeviceParameter& parameter)
{
    if (!parameter.hasOptionList) {
        return valueDigits(parameter) +
               (parameter.unit.empty() ? "" : " " + text::toUtf8(parameter.unit));
    }
    const auto* option = parameter.currentOption();
    std::string text = option != nullptr ? text::toUtf8(option->text) : "";
    try {
        if (option != nullptr &&
            acceptedValue(parameter, text, ValueCheck::Full) == parameter.value) {
            return text;
        }
    } catch (const InvalidInput&) {
        // Several options have this text, or it is the number of another option.
    }
    return "#" + parameter.value;
}

std::string optionsText(const DeviceParameter& parameter)
{
    std::string text;
    for (const auto& option : parameter.options) {
        text += fmt::format("{}{} = #{}", text.empty() ? "" : " | ", text::toUtf8(option.text),
                            option.value);
    }
    return text.empty() ? "no option" : text;
}

std::string rangeText(const DeviceParameter& parameter)
{
    return fmt::format("{}{}", acceptedValues(parameter),
                       parameter.unit.empty() ? "" : " " + text::toUtf8(parameter.unit));
}

// The values that are accepted instead.
std::string comment(const DeviceParameter& parameter, const DeviceParameter& standard)
{
    return text::forTerminal(
        valuesComment(parameter.hasOptionList ? optionsText(parameter) : rangeText(parameter),
                      valueInCalls(standard), isInRange(parameter) ? "" : "takes --force"));
}

// Writes `owner` before the comment.
std::string lines(const std::string& key, const DeviceParameter& parameter,
                  const DeviceParameter& standard, const std::string& indent,
                  const std::string& owner = "")
{
    return fmt::format("{0}# {1}{2}\n{0}{3}: {4}\n", indent, owner, comment(parameter, standard),
                       text::yamlScalar(key), text::yamlScalar(valueInCalls(parameter)));
}

// A map "schema" would mark the file as JSON output of `config`.
bool isUsable(const std::string& key)
{
    return key != "schema" && text::forTerminal(key) == key;
}

bool namesEach(const std::string& owner, const Parameters& parameters, const ParameterNames& names)
{
    return isUsable(owner) &&
           std::all_of(parameters.begin(), parameters.end(), [&](const DeviceParameter* parameter) {
               const auto found =
                   parametersCalled(owner + "/" + text::toUtf8(parameter->name), names);
               return found.size() == 1 && found.front() == parameter;
           });
}

// The name of a channel under which all of its parameters are found; empty if there is none.
std::string groupName(const Parameters& parameters, const ParameterNames& names)
{
    std::vector<std::string> owners;
    for (const std::string& name : parameters.front()->channelNames) {
        owners.push_back(text::toUtf8(name));
    }
    owners.push_back(std::to_string(parameters.front()->channelNumber));
    const auto found = std::find_if(owners.begin(), owners.end(), [&](const std::string& owner) {
        return namesEach(owner, parameters, names);
    });
    return found == owners.end() || parameters.front()->ofModule() ? "" : *found;
}

class ValuesWriter
{
public:
    explicit ValuesWriter(const ConfiguredImage& shown) : configuration(shown), names(shown.device)
    {}

    std::string group(const Parameters& parameters) const
    {
        const std::string name = groupName(parameters, names);
        std::string text = name.empty() ? "" : "\n" + text::yamlScalar(name) + ":\n";
        for (const DeviceParameter* parameter : parameters) {
            text += name.empty() ? "\n" + alone(*parameter)
                                 : lines(text::toUtf8(parameter->name), *parameter,
                                         standard(*parameter), "  ");
        }
        return text;
    }

private:
    std::string alone(const DeviceParameter& parameter) const
    {
        const std::string name = nameInCalls(parameter, names);
        const std::string owner = name[0] == '#'
                                      ? fmt::format("{} of {}: ", text::forTerminal(parameter.name),
                                                    text::forTerminal(ownerOf(parameter)))
                                      : "";
        return lines(isUsable(name) ? name : "#" + parameter.id, parameter, standard(parameter), "",
                     owner);
    }

    const DeviceParameter& standard(const DeviceParameter& parameter) const
    {
        const auto position =
            static_cast<std::size_t>(&parameter - configuration.device.parameters.data());
        return configuration.defaults->parameters[position];
    }

    const ConfiguredImage& configuration;
    ParameterNames names;
};

} // namespace

std::string configurationValues(const ConfiguredImage& configuration, Listing listing)
{
    const DeviceReport& device = configuration.device;
    std::string text = valuesTitle(
        fmt::format("{} ({}){}", text::forTerminal(device.label), device.deviceTypeId,
                    listing == Listing::Changed ? ": what differs from the defaults" : ""));
    const ValuesWriter writer(configuration);
    Parameters group;
    for (std::size_t i = 0; i < device.parameters.size(); ++i) {
        const DeviceReport::Parameter& parameter = device.parameters[i];
        if (!configuration.isListed(i, listing) || !parameter.raw) {
            continue;
        }
        if (!group.empty() && group.front()->channelNumber != parameter.channelNumber) {
            text += writer.group(group);
            group.clear();
        }
        group.push_back(&parameter);
    }
    return text + (group.empty() ? "" : writer.group(group));
}

} // namespace mxmodule
