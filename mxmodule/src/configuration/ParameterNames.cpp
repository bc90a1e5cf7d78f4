#include "configuration/ParameterNames.h"

#include "InvalidInput.h"
#include "ParameterText.h"

#include <mxauthor/Utf8.h>

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/NearestWords.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <algorithm>
#include <iterator>

namespace mxmodule {

namespace {

bool isIdentifier(const std::string& name)
{
    return name.size() > 1 && name[0] == '#' &&
           name.find_first_not_of("0123456789", 1) == std::string::npos;
}

bool belongsTo(const DeviceReport::Parameter& parameter, const std::string& owner)
{
    if (owner == text::toUtf8(ownerOf(parameter))) {
        return true;
    }
    const std::string number = std::to_string(parameter.channelNumber);
    const auto& names = parameter.channelNames;
    return !parameter.ofModule() &&
           (owner == number ||
            std::any_of(names.begin(), names.end(), [&](const std::string& name) {
                return owner == text::toUtf8(name) || owner == number + " " + text::toUtf8(name);
            }));
}

const std::vector<std::size_t>&
find(const std::unordered_map<std::string, std::vector<std::size_t>>& positions,
     const std::string& key)
{
    static const std::vector<std::size_t> none;
    const auto found = positions.find(key);
    return found == positions.end() ? none : found->second;
}

std::vector<std::string> callNamesOf(const std::vector<const DeviceReport::Parameter*>& parameters,
                                     const ParameterNames& names)
{
    std::vector<std::string> all(parameters.size());
    std::transform(parameters.begin(), parameters.end(), all.begin(),
                   [&names](const auto* parameter) { return nameInCalls(*parameter, names); });
    return all;
}

std::string qualifiedName(const DeviceReport::Parameter& parameter)
{
    const std::string owner = parameter.ofModule() ? "module"
                              : parameter.channelNames.empty()
                                  ? std::to_string(parameter.channelNumber)
                                  : text::toUtf8(parameter.channelNames.front());
    return owner + "/" + text::toUtf8(parameter.name);
}

// Whether "NAME=VALUE" with `name` could be read as a shorter name and a value that begins with the
// rest.
bool beginsWithAnotherName(const std::string& name, const ParameterNames& names)
{
    for (std::size_t at = name.find('='); at != std::string::npos; at = name.find('=', at + 1)) {
        if (!parametersCalled(name.substr(0, at), names).empty()) {
            return true;
        }
    }
    return false;
}

bool meansAlone(const std::string& name, const DeviceReport::Parameter& parameter,
                const ParameterNames& names)
{
    const auto found = parametersCalled(name, names);
    return found.size() == 1 && found.front()->id == parameter.id &&
           text::forTerminal(name) == name && !beginsWithAnotherName(name, names);
}

// The nearest names, each in a form that matches one parameter.
std::vector<std::string> nearestNames(const std::string& name, const ParameterNames& names)
{
    constexpr std::size_t mostNames = 3;
    std::vector<std::string> known;
    for (const auto& parameter : names.device().parameters) {
        known.push_back(text::toUtf8(parameter.name));
        known.push_back(qualifiedName(parameter));
    }
    std::vector<std::string> offered;
    for (const std::string& near : text::nearestWords(name, known)) {
        for (const auto* parameter : parametersCalled(near, names)) {
            const std::string called = nameInCalls(*parameter, names);
            if (std::find(offered.begin(), offered.end(), called) == offered.end()) {
                offered.push_back(called);
            }
        }
    }
    offered.resize(std::min(offered.size(), mostNames));
    return offered;
}

[[noreturn]] void rejectUnknown(const std::string& name, const ParameterNames& names)
{
    if (names.device().parameters.empty()) {
        throw InvalidInput(fmt::format("No parameter \"{}\": the module has no parameters",
                                       text::abbreviated(name)));
    }
    if (isIdentifier(name)) {
        constexpr std::size_t mostIds = 50;
        std::vector<std::string> ids;
        for (const auto& parameter : names.device().parameters) {
            if (ids.size() == mostIds) {
                ids.push_back("...");
                break;
            }
            ids.push_back("#" + parameter.id);
        }
        const std::string text =
            fmt::format("No parameter has the identifier {}, expected one of {}",
                        text::abbreviated(name), fmt::join(ids, ", "));
        if (ids.size() > mostIds) {
            ids.pop_back();
        }
        throw InvalidInput(text, "", ids);
    }
    const auto byId = parametersCalled("#" + name, names);
    if (!byId.empty()) {
        throw InvalidInput(
            fmt::format("No parameter is called \"{}\", did you mean \"#{}\"?", name, name),
            fmt::format("#{} is {}", name, text::toUtf8(described(*byId.front()))), {"#" + name});
    }
    const std::vector<std::string> nearest = nearestNames(name, names);
    const std::string guess =
        nearest.empty() ? ""
                        : fmt::format(", did you mean \"{}\"?", fmt::join(nearest, "\" or \""));
    throw InvalidInput(
        fmt::format("No parameter is called \"{}\"{}", text::abbreviated(name), guess),
        "mxtool config FILE without further arguments lists the parameters", nearest);
}

// One way to read "NAME=VALUE".
struct Reading
{
    std::string name;
    std::string value;
    std::vector<const DeviceReport::Parameter*> parameters; // that match the name
};

std::vector<Reading> readingsOf(const std::string& words, const ParameterNames& names)
{
    std::vector<Reading> readings;
    for (std::size_t at = words.find('='); at != std::string::npos; at = words.find('=', at + 1)) {
        Reading reading{words.substr(0, at), words.substr(at + 1), {}};
        reading.parameters = parametersCalled(reading.name, names);
        if (!reading.parameters.empty()) {
            readings.push_back(std::move(reading));
        }
    }
    return readings;
}

bool isAccepted(const Reading& reading, ValueCheck check)
{
    return std::any_of(reading.parameters.begin(), reading.parameters.end(),
                       [&](const DeviceReport::Parameter* parameter) {
                           try {
                               acceptedValue(*parameter, reading.value, check);
                               return true;
                           } catch (const InvalidInput&) {
                               return false;
                           }
                       });
}

std::string waysOf(const std::vector<Reading>& readings)
{
    std::vector<std::string> ways(readings.size());
    std::transform(readings.begin(), readings.end(), ways.begin(), [](const Reading& reading) {
        return fmt::format("\"{}\" set to \"{}\"", reading.name, reading.value);
    });
    return fmt::format("{}", fmt::join(ways, ", or "));
}

[[noreturn]] void rejectReadings(const std::string& words, const std::vector<Reading>& readings)
{
    std::vector<std::string> byId;
    for (const Reading& reading : readings) {
        for (const auto* parameter : reading.parameters) {
            byId.push_back(fmt::format("\"#{}={}\"", parameter->id, reading.value));
        }
    }
    throw InvalidInput(
        fmt::format("\"{}\" can be read in {} ways: {}", words, readings.size(), waysOf(readings)),
        fmt::format("write one of {}", fmt::join(byId, ", ")));
}

[[noreturn]] void rejectEach(const std::string& words, const std::vector<Reading>& readings)
{
    std::vector<std::string> accepted;
    for (const Reading& reading : readings) {
        for (const auto* parameter : reading.parameters) {
            accepted.push_back(fmt::format("#{} accepts {}", parameter->id,
                                           text::toUtf8(acceptedValues(*parameter))));
        }
    }
    throw InvalidInput(fmt::format("\"{}\" can be read in {} ways, no value is accepted: {}", words,
                                   readings.size(), waysOf(readings)),
                       fmt::format("{}", fmt::join(accepted, "; ")));
}

} // namespace

ParameterNames::ParameterNames(const DeviceReport& device) : described(&device)
{
    for (std::size_t i = 0; i < device.parameters.size(); ++i) {
        byId[device.parameters[i].id].push_back(i);
        const std::string name = text::toUtf8(device.parameters[i].name);
        longest = std::max(longest, name.size());
        byName[name].push_back(i);
    }
}

std::vector<std::size_t> ParameterNames::positionsOf(const std::string& name) const
{
    if (isIdentifier(name)) {
        return find(byId, name.substr(1));
    }
    std::vector<std::size_t> found = find(byName, name);
    // Names of channels and parameters may contain slashes: the text after one of them must be the
    // parameter's name, the text before it the channel's.
    const std::size_t first = name.size() - std::min(name.size(), longest + 1);
    for (std::size_t at = name.find('/', first); at != std::string::npos;
         at = name.find('/', at + 1)) {
        for (const std::size_t position : find(byName, name.substr(at + 1))) {
            if (belongsTo(described->parameters[position], name.substr(0, at))) {
                found.push_back(position);
            }
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::vector<const DeviceReport::Parameter*> parametersCalled(const std::string& name,
                                                             const ParameterNames& names)
{
    std::vector<const DeviceReport::Parameter*> found;
    for (const std::size_t position : names.positionsOf(name)) {
        found.push_back(&names.device().parameters[position]);
    }
    return found;
}

const DeviceReport::Parameter& parameterCalled(const std::string& name, const ParameterNames& names)
{
    const auto found = parametersCalled(name, names);
    if (found.empty()) {
        rejectUnknown(name, names);
    }
    if (found.size() > 1) {
        const std::vector<std::string> meant = callNamesOf(found, names);
        throw InvalidInput(fmt::format("{} parameters are called \"{}\", expected one of \"{}\"",
                                       found.size(), name, fmt::join(meant, "\", \"")),
                           "", meant);
    }
    return *found.front();
}

std::string nameInCalls(const DeviceReport::Parameter& parameter, const ParameterNames& names)
{
    for (const std::string& name : {text::toUtf8(parameter.name), qualifiedName(parameter)}) {
        if (meansAlone(name, parameter, names)) {
            return name;
        }
    }
    return "#" + parameter.id;
}

std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const ParameterNames& names, ValueCheck check)
{
    if (const auto error = mxauthor::findNonUtf8(words)) {
        throw InvalidInput(fmt::format("Character {}: {}", error->column, error->text));
    }
    const std::size_t first = words.find('=');
    if (first == std::string::npos) {
        throw InvalidInput(
            fmt::format("Found \"{}\", expected NAME=VALUE", text::abbreviated(words)));
    }
    std::pair<std::string, std::string> plain{words.substr(0, first), words.substr(first + 1)};
    const std::vector<Reading> readings = readingsOf(words, names);
    if (isIdentifier(plain.first) || readings.empty()) {
        return plain;
    }
    std::vector<Reading> accepted;
    std::copy_if(readings.begin(), readings.end(), std::back_inserter(accepted),
                 [check](const Reading& reading) { return isAccepted(reading, check); });
    if (accepted.size() > 1) {
        rejectReadings(words, accepted);
    }
    if (accepted.empty() && readings.size() > 1) {
        rejectEach(words, readings);
    }
    const Reading& meant = accepted.empty() ? readings.front() : accepted.front();
    return {meant.name, meant.value};
}

} // namespace mxmodule
