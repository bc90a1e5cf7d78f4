#include "datasheet/DatasheetModule.h"

#include <fmt/format.h>
#include <text/Html.h>

#include <map>
#include <utility>

namespace mxmodule {

DatasheetModule::DatasheetModule(const Module& shown, const std::vector<char>& image,
                                 DatasheetPlace where)
    : module(shown),
      place(std::move(where)),
      raw(shown.configuration(image, Fieldbus::Raw, shown.name())),
      parameters(raw.parameters()),
      defaults(raw.defaults()),
      content(shown.content)
{
    try {
        modbus = shown.configuration(image, Fieldbus::Modbus, shown.name());
    } catch (const Failure& failure) {
        noRegisters = failure.reason().text;
    }
}

std::string DatasheetModule::parameterId(const Parameter& parameter) const
{
    return id("parameter-" + parameter.id);
}

std::string DatasheetModule::channelId(const std::string& channel) const
{
    return id("channel-" + channel);
}

std::string DatasheetModule::heading(const std::string& name, const std::string& words) const
{
    return text::htmlElement(fmt::format("h{}", place.headingLevel), text::htmlText(words),
                             fmt::format(" id=\"{}\"", id(name))) +
           "\n";
}

std::vector<char> DatasheetModule::mxBytes() const
{
    const std::vector<char>& loaded = content->bytes();
    return {loaded.begin(), loaded.end() - 1};
}

std::string groupOf(const Parameter& parameter)
{
    if (!parameter.channel) {
        return "Module";
    }
    const std::string names = fmt::format("{}", fmt::join(parameter.channelNames, ", "));
    return fmt::format("Channel {}{}{}", *parameter.channel, names.empty() ? "" : ": ", names);
}

std::string longNameOf(const Parameter& parameter)
{
    if (!parameter.channel) {
        return parameter.name;
    }
    const std::string owner = parameter.channelNames.size() == 1
                                  ? parameter.channelNames.front()
                                  : fmt::format("Channel {}", *parameter.channel);
    return owner + " / " + parameter.name;
}

std::vector<std::vector<std::size_t>> groupsOf(const std::vector<Parameter>& parameters)
{
    std::vector<std::vector<std::size_t>> groups(1); // the first is that of the module
    std::map<unsigned, std::size_t> known;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        std::size_t group = 0;
        if (parameters[i].channel) {
            group = known.emplace(*parameters[i].channel, groups.size()).first->second;
        }
        if (group == groups.size()) {
            groups.emplace_back();
        }
        groups[group].push_back(i);
    }
    if (groups.front().empty()) {
        groups.erase(groups.begin());
    }
    return groups;
}

} // namespace mxmodule
