#include "config/ParameterNames.h"

#include "NearestWords.h"
#include "ParameterText.h"
#include "Refusal.h"
#include "ShownText.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

bool isIdentifier(const std::string& name)
{
    return name.size() > 1 && name[0] == '#' &&
           name.find_first_not_of("0123456789", 1) == std::string::npos;
}

bool belongsTo(const DeviceReport::Parameter& parameter, const std::string& owner)
{
    if (parameter.ofModule()) {
        return owner == "module";
    }
    const auto& names = parameter.channelNames;
    return owner == std::to_string(parameter.channelNumber) ||
           std::any_of(names.begin(), names.end(),
                       [&owner](const std::string& name) { return toUtf8(name) == owner; });
}

bool isCalled(const DeviceReport::Parameter& parameter, const std::string& name)
{
    if (isIdentifier(name)) {
        return parameter.id == name.substr(1);
    }
    const std::string own = toUtf8(parameter.name);
    if (own == name) {
        return true;
    }
    // Channels and parameters may have a slash in their names: what stands behind one of the
    // slashes must be the parameter's, what stands in front of it the channel's.
    if (name.size() <= own.size() || name[name.size() - own.size() - 1] != '/' ||
        name.compare(name.size() - own.size(), own.size(), own) != 0) {
        return false;
    }
    return belongsTo(parameter, name.substr(0, name.size() - own.size() - 1));
}

std::vector<std::string> namesOf(const std::vector<const DeviceReport::Parameter*>& parameters,
                                 const DeviceReport& device)
{
    std::vector<std::string> names(parameters.size());
    std::transform(
        parameters.begin(), parameters.end(), names.begin(),
        [&device](const auto* parameter) { return toUtf8(nameInCalls(*parameter, device)); });
    return names;
}

[[noreturn]] void refuseUnknown(const std::string& name, const DeviceReport& device)
{
    if (device.parameters.empty()) {
        throw Refusal(fmt::format("No parameter \"{}\": the module has no parameters", name));
    }
    if (isIdentifier(name)) {
        constexpr std::size_t mostIds = 50;
        std::vector<std::string> ids;
        for (const auto& parameter : device.parameters) {
            if (ids.size() == mostIds) {
                ids.push_back("...");
                break;
            }
            ids.push_back("#" + parameter.id);
        }
        throw Refusal(fmt::format("No parameter has the identifier {}, expected one of {}", name,
                                  fmt::join(ids, ", ")));
    }
    std::vector<std::string> names;
    for (const auto& parameter : device.parameters) {
        names.push_back(toUtf8(parameter.name));
        names.push_back(toUtf8(nameInCalls(parameter, device)));
    }
    throw Refusal(fmt::format("No parameter is called \"{}\"{}", name, didYouMean(name, names)),
                  "mxtool config FILE without more words lists the parameters");
}

} // namespace

std::vector<const DeviceReport::Parameter*> parametersCalled(const std::string& name,
                                                             const DeviceReport& device)
{
    std::vector<const DeviceReport::Parameter*> found;
    for (const auto& parameter : device.parameters) {
        if (isCalled(parameter, name)) {
            found.push_back(&parameter);
        }
    }
    return found;
}

const DeviceReport::Parameter& parameterCalled(const std::string& name, const DeviceReport& device)
{
    const auto found = parametersCalled(name, device);
    if (found.empty()) {
        refuseUnknown(name, device);
    }
    if (found.size() > 1) {
        throw Refusal(fmt::format("{} parameters are called \"{}\", expected one of \"{}\"",
                                  found.size(), name, fmt::join(namesOf(found, device), "\", \"")));
    }
    return *found.front();
}

std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const DeviceReport& device)
{
    const std::size_t first = words.find('=');
    if (first == std::string::npos) {
        throw Refusal(fmt::format("Found \"{}\", expected NAME=VALUE", words));
    }
    for (std::size_t at = first; at != std::string::npos; at = words.find('=', at + 1)) {
        if (!parametersCalled(words.substr(0, at), device).empty()) {
            return {words.substr(0, at), words.substr(at + 1)};
        }
    }
    return {words.substr(0, first), words.substr(first + 1)};
}

} // namespace mxtool
