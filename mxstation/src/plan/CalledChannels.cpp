#include "plan/CalledChannels.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/NearestWords.h>

#include <set>

namespace mxstation {

using mxmodule::Finding;
using mxmodule::Severity;

std::string CalledChannels::CalledChannel::shown() const
{
    return fmt::format("#{} ({} {}, {})", id, number, name, direction);
}

CalledChannels::CalledChannels(const mxmodule::ChannelMap& map)
{
    for (const auto& channel : map.channels()) {
        channels.push_back({channel.id, std::to_string(channel.number), channel.name,
                            channel.isInput ? "in" : "out", true});
    }
    for (const auto& channel : map.withoutSymbol()) {
        channels.push_back(
            {channel.id, std::to_string(channel.number), channel.name, channel.direction, false});
    }
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const CalledChannel& one = channels[i];
        for (const std::string& word : std::set<std::string>{
                 one.name, one.number, one.number + " " + one.name, "#" + one.id}) {
            positions[word].push_back(i);
        }
    }
}

std::vector<std::size_t> CalledChannels::called(const std::string& word) const
{
    const auto found = positions.find(word);
    return found == positions.end() ? std::vector<std::size_t>() : found->second;
}

std::string CalledChannels::bestWord(std::size_t position) const
{
    const CalledChannel& one = channels[position];
    return !one.name.empty() && called(one.name).size() == 1 ? one.name : "#" + one.id;
}

Finding CalledChannels::rejected(const std::string& word) const
{
    const std::vector<std::size_t> found = called(word);
    if (found.empty()) {
        return unknown(word);
    }
    std::vector<std::string> all;
    std::vector<std::string> accepted;
    for (const std::size_t position : found) {
        all.push_back(shown(position));
        accepted.push_back("#" + channels[position].id);
    }
    Finding finding{Severity::Error, "",
                    fmt::format("\"{}\" fits several channels: {}", text::abbreviated(word),
                                text::beginningOfList(all, 10, ", ", " ")),
                    "a channel is also called by its identifier, such as \"" + accepted.front() +
                        "\""};
    finding.accepted = accepted;
    return finding;
}

Finding CalledChannels::unknown(const std::string& word) const
{
    std::vector<std::string> names;
    names.reserve(channels.size());
    for (const CalledChannel& channel : channels) {
        names.push_back(channel.name);
    }
    Finding finding{Severity::Error, "",
                    fmt::format("the module has no channel \"{}\"{}", text::abbreviated(word),
                                names.empty() ? "" : text::acceptedWords(word, names))};
    finding.accepted = text::nearestWords(word, names);
    return finding;
}

} // namespace mxstation
