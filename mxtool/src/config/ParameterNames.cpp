#include "config/ParameterNames.h"

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

namespace mxtool {

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

bool isCalled(const DeviceReport::Parameter& parameter, const std::string& name)
{
    if (isIdentifier(name)) {
        return parameter.id == name.substr(1);
    }
    const std::string own = text::toUtf8(parameter.name);
    if (own == name) {
        return true;
    }
    // Names of channels and parameters may contain slashes: the text after one of them must be the
    // parameter's name, the text before it the channel's.
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
    std::transform(parameters.begin(), parameters.end(), names.begin(),
                   [&device](const auto* parameter) { return nameInCalls(*parameter, device); });
    return names;
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
bool beginsWithAnotherName(const std::string& name, const DeviceReport& device)
{
    for (std::size_t at = name.find('='); at != std::string::npos; at = name.find('=', at + 1)) {
        if (!parametersCalled(name.substr(0, at), device).empty()) {
            return true;
        }
    }
    return false;
}

bool meansAlone(const std::string& name, const DeviceReport::Parameter& parameter,
                const DeviceReport& device)
{
    const auto found = parametersCalled(name, device);
    return found.size() == 1 && found.front()->id == parameter.id &&
           text::forTerminal(name) == name && !beginsWithAnotherName(name, device);
}

// The nearest names, each in a form that matches one parameter.
std::string nearestNames(const std::string& name, const DeviceReport& device)
{
    constexpr std::size_t mostNames = 3;
    std::vector<std::string> names;
    for (const auto& parameter : device.parameters) {
        names.push_back(text::toUtf8(parameter.name));
        names.push_back(qualifiedName(parameter));
    }
    std::vector<std::string> offered;
    for (const std::string& near : text::nearestWords(name, names)) {
        for (const auto* parameter : parametersCalled(near, device)) {
            const std::string called = nameInCalls(*parameter, device);
            if (std::find(offered.begin(), offered.end(), called) == offered.end()) {
                offered.push_back(called);
            }
        }
    }
    offered.resize(std::min(offered.size(), mostNames));
    return offered.empty() ? ""
                           : fmt::format(", did you mean \"{}\"?", fmt::join(offered, "\" or \""));
}

[[noreturn]] void rejectUnknown(const std::string& name, const DeviceReport& device)
{
    if (device.parameters.empty()) {
        throw InvalidInput(fmt::format("No parameter \"{}\": the module has no parameters",
                                       text::abbreviated(name)));
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
        throw InvalidInput(fmt::format("No parameter has the identifier {}, expected one of {}",
                                       text::abbreviated(name), fmt::join(ids, ", ")));
    }
    const auto byId = parametersCalled("#" + name, device);
    if (!byId.empty()) {
        throw InvalidInput(
            fmt::format("No parameter is called \"{}\", did you mean \"#{}\"?", name, name),
            fmt::format("#{} is {}", name, text::toUtf8(described(*byId.front()))));
    }
    throw InvalidInput(fmt::format("No parameter is called \"{}\"{}", text::abbreviated(name),
                                   nearestNames(name, device)),
                       "mxtool config FILE without further arguments lists the parameters");
}

// One way to read "NAME=VALUE".
struct Reading
{
    std::string name;
    std::string value;
    std::vector<const DeviceReport::Parameter*> parameters; // that match the name
};

std::vector<Reading> readingsOf(const std::string& words, const DeviceReport& device)
{
    std::vector<Reading> readings;
    for (std::size_t at = words.find('='); at != std::string::npos; at = words.find('=', at + 1)) {
        Reading reading{words.substr(0, at), words.substr(at + 1), {}};
        reading.parameters = parametersCalled(reading.name, device);
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
        rejectUnknown(name, device);
    }
    if (found.size() > 1) {
        throw InvalidInput(fmt::format("{} parameters are called \"{}\", expected one of \"{}\"",
                                       found.size(), name,
                                       fmt::join(namesOf(found, device), "\", \"")));
    }
    return *found.front();
}

std::string nameInCalls(const DeviceReport::Parameter& parameter, const DeviceReport& device)
{
    for (const std::string& name : {text::toUtf8(parameter.name), qualifiedName(parameter)}) {
        if (meansAlone(name, parameter, device)) {
            return name;
        }
    }
    return "#" + parameter.id;
}

std::pair<std::string, std::string> splitAssignment(const std::string& words,
                                                    const DeviceReport& device, ValueCheck check)
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
    const std::vector<Reading> readings = readingsOf(words, device);
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

} // namespace mxtool
