#include "diff/ModuleDiff.h"

#include <fmt/format.h>
#include <text/Counted.h>

#include <map>
#include <tuple>

namespace mxstation {

namespace {

auto placeOf(const Channel& channel)
{
    return std::tuple(channel.isInput, channel.firstBit, channel.bits, channel.isSigned,
                      channel.isBitField);
}

// "IW4, signed", "IX0_3, 2 bits".
std::string placeOfChannelText(const Channel& channel)
{
    return channel.symbol +
           (channel.isBitField && channel.bits > 1 ? ", " + text::counted(channel.bits, "bit")
                                                   : "") +
           (channel.isSigned ? ", signed" : "");
}

// Names the channels of a module so that each name is unique, if it can be.
class ChannelNames
{
public:
    explicit ChannelNames(const std::vector<ChannelPair>& pairs)
    {
        for (const ChannelPair& pair : pairs) {
            ++uses[pair.a != nullptr ? pair.a->name : pair.b->name];
        }
    }

    std::string nameOf(const Channel& channel) const
    {
        const auto found = uses.find(channel.name);
        if (!channel.name.empty() && found != uses.end() && found->second == 1) {
            return channel.name;
        }
        return fmt::format("{} {} ({})", channel.number, channel.name,
                           channel.isInput ? "in" : "out");
    }

private:
    std::map<std::string, std::size_t> uses;
};

void addChannelPair(const std::string& module, const std::string& channel, const ChannelPair& pair,
                    StationDifference& difference)
{
    auto& changes = difference.changes;
    if (pair.b == nullptr) {
        changes.push_back(
            {ChangeKind::ChannelRemoved, module, channel, placeOfChannelText(*pair.a), "", true});
    } else if (pair.a == nullptr) {
        changes.push_back(
            {ChangeKind::ChannelAdded, module, channel, "", placeOfChannelText(*pair.b), false});
    } else {
        if (placeOf(*pair.a) != placeOf(*pair.b)) {
            changes.push_back({ChangeKind::ChannelMoved, module, channel,
                               placeOfChannelText(*pair.a), placeOfChannelText(*pair.b), true});
        }
        if (pair.a->alias != pair.b->alias) {
            changes.push_back(
                {ChangeKind::Alias, module, channel, pair.a->alias, pair.b->alias, false});
        }
    }
}

} // namespace

void addChannelChanges(const std::string& name, const std::vector<ChannelPair>& pairs,
                       StationDifference& difference)
{
    const ChannelNames names(pairs);
    for (const ChannelPair& pair : pairs) {
        addChannelPair(name, names.nameOf(pair.a != nullptr ? *pair.a : *pair.b), pair, difference);
    }
}

} // namespace mxstation
