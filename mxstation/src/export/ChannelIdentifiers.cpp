#include "export/ChannelIdentifiers.h"

#include <fmt/format.h>
#include <text/Beginning.h>

namespace mxstation {

namespace {

constexpr std::size_t longestModulePart = 48; // in bytes; the rest is for the channel

std::string ownIdentifier(const Channel& channel)
{
    const bool isUsable = !text::iecIdentifier(channel.name).empty();
    const std::string name = isUsable ? channel.name : fmt::format("Channel_{}", channel.number);
    return text::iecIdentifier(text::beginningOf(channel.moduleName, longestModulePart) + "_" +
                               name);
}

} // namespace

std::vector<std::vector<std::string>>
channelIdentifiers(const Plan& plan, const NameSuffixes& suffixes, text::IecNames& names)
{
    std::vector<std::vector<std::string>> all(plan.channels.size());
    for (const bool aliases : {true, false}) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Channel& channel = plan.channels[i];
            const std::string alias = text::iecIdentifier(channel.alias);
            if (alias.empty() == aliases) {
                continue;
            }
            const std::string identifier = aliases ? alias : ownIdentifier(channel);
            for (const std::string& suffix : suffixes(channel)) {
                all[i].push_back(names.unique(identifier + suffix));
            }
        }
    }
    return all;
}

} // namespace mxstation
