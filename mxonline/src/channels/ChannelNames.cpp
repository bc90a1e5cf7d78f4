#include "channels/ChannelNames.h"

#include "channels/ChannelBits.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/NearestWords.h>

#include <set>
#include <utility>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Origin;
using mxstation::Channel;

constexpr std::size_t mostListed = 10;
constexpr const char* howChannelsAreCalled =
    "a channel is called by its alias, by MODULE/CHANNEL, or by its name if no other has it";

std::set<std::string> modulesOf(const Channel& channel)
{
    return {channel.moduleName, std::to_string(channel.module)};
}

// Everything that calls the channel, apart from its alias.
std::set<std::string> wordsOf(const Channel& channel)
{
    const std::string number = std::to_string(channel.number);
    std::set<std::string> words = {channel.name};
    for (const std::string& module : modulesOf(channel)) {
        for (const std::string& word :
             {channel.name, number, number + " " + channel.name, "#" + channel.id}) {
            words.insert(fmt::format("{}/{}", module, word));
        }
    }
    return words;
}

Failure requestFailure(const std::string& text, const std::string& hint,
                       std::vector<std::string> accepted)
{
    Finding finding;
    finding.origin = Origin::Request;
    finding.text = text;
    finding.hint = hint;
    finding.accepted = std::move(accepted);
    return Failure(finding);
}

// `what` was looked for among `known`.
Failure unknown(const char* what, const std::string& name, const std::vector<std::string>& known)
{
    return requestFailure(fmt::format("the station has no {} \"{}\"{}", what,
                                      text::abbreviated(name), text::didYouMean(name, known)),
                          howChannelsAreCalled, text::nearestWords(name, known));
}

} // namespace

ChannelNames::ChannelNames(const mxstation::Plan& planned) : plan(planned)
{
    for (std::size_t i = 0; i < plan.channels.size(); ++i) {
        const Channel& channel = plan.channels[i];
        byAlias.emplace(channel.alias, i);
        for (const std::string& word : wordsOf(channel)) {
            byWord[word].push_back(i);
        }
        for (const std::string& module : modulesOf(channel)) {
            if (!reasonWithoutValue(plan, channel)) {
                byModule[module].push_back(i);
            }
        }
    }
    byAlias.erase("");
    byWord.erase("");
}

std::size_t ChannelNames::find(const std::string& name) const
{
    const std::vector<std::size_t> channels = called(name);
    if (channels.empty()) {
        throw unknown("channel", name, knownNames());
    }
    return oneOf(name, channels);
}

std::vector<std::size_t> ChannelNames::select(const std::vector<std::string>& names) const
{
    std::set<std::size_t> indexes;
    std::vector<Finding> errors;
    for (const std::string& name : names) {
        try {
            const std::vector<std::size_t> some = selected(name);
            indexes.insert(some.begin(), some.end());
        } catch (const Failure& failure) {
            errors.push_back(failure.reason());
        }
    }
    if (!errors.empty()) {
        throw Failure(errors);
    }
    for (std::size_t i = 0; names.empty() && i < plan.channels.size(); ++i) {
        if (!reasonWithoutValue(plan, plan.channels[i])) {
            indexes.insert(i);
        }
    }
    return {indexes.begin(), indexes.end()};
}

std::string ChannelNames::nameOf(std::size_t channel) const
{
    const Channel& named = plan.channels[channel];
    for (const std::string& name :
         {named.alias, named.moduleName + "/" + named.name, named.moduleName + "/#" + named.id}) {
        if (called(name) == std::vector{channel}) {
            return name;
        }
    }
    return fmt::format("{}/#{}", named.module, named.id);
}

std::vector<std::size_t> ChannelNames::called(const std::string& name) const
{
    const auto alias = byAlias.find(name);
    if (alias != byAlias.end()) {
        return {alias->second};
    }
    const auto word = byWord.find(name);
    return word == byWord.end() ? std::vector<std::size_t>() : word->second;
}

std::vector<std::size_t> ChannelNames::selected(const std::string& name) const
{
    const std::vector<std::size_t> channels = called(name);
    if (!channels.empty()) {
        return {oneOf(name, channels)};
    }
    const auto found = byModule.find(name);
    if (found != byModule.end()) {
        return found->second;
    }
    std::vector<std::string> known = knownNames();
    for (const auto& [module, ofIt] : byModule) {
        known.push_back(module);
    }
    throw unknown("channel or module with channels", name, known);
}

std::vector<std::string> ChannelNames::knownNames() const
{
    std::vector<std::string> names;
    for (const Channel& channel : plan.channels) {
        for (const std::string& name :
             {channel.alias, channel.name, channel.moduleName + "/" + channel.name}) {
            if (!called(name).empty()) {
                names.push_back(name);
            }
        }
    }
    return names;
}

std::size_t ChannelNames::oneOf(const std::string& name,
                                const std::vector<std::size_t>& channels) const
{
    if (channels.size() > 1) {
        throw ambiguous(name, channels);
    }
    const Channel& channel = plan.channels[channels.front()];
    if (const auto reason = reasonWithoutValue(plan, channel)) {
        throw requestFailure(
            fmt::format("the {} {}: it has no value", channelText(channel), *reason), "", {});
    }
    return channels.front();
}

Failure ChannelNames::ambiguous(const std::string& name,
                                const std::vector<std::size_t>& channels) const
{
    std::vector<std::string> accepted;
    accepted.reserve(channels.size());
    for (const std::size_t channel : channels) {
        accepted.push_back(nameOf(channel));
    }
    return requestFailure(fmt::format("\"{}\" fits {} channels: {}", text::abbreviated(name),
                                      channels.size(),
                                      text::beginningOfList(accepted, mostListed, ", ", " ")),
                          howChannelsAreCalled, accepted);
}

std::vector<NamedChannel> namedChannels(const mxstation::Plan& plan, const ChannelNames& names,
                                        const std::vector<std::size_t>& indexes)
{
    std::vector<NamedChannel> channels;
    for (const std::size_t index : indexes) {
        const Channel& channel = plan.channels[index];
        channels.push_back({names.nameOf(index), index, channel.module, channel.moduleName,
                            channel.name, channel.alias, channel.symbol});
    }
    return channels;
}

std::string channelText(const Channel& channel)
{
    return fmt::format("channel \"{}\" of module {} \"{}\"", text::shortened(channel.name),
                       channel.module, text::shortened(channel.moduleName));
}

} // namespace mxonline
