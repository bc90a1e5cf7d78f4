#include "diff/Differences.h"
#include <text/Counted.h>

#include <map>
#include <tuple>

namespace mxauthor {

namespace {

using Channel = ModuleView::Channel;

// Channels are paired by direction and number; of several, the n-th with the n-th.
using Key = std::tuple<bool, std::uint8_t, unsigned>;

std::map<Key, const Channel*> channelsByKey(const ModuleView& module)
{
    std::map<Key, const Channel*> all;
    std::map<std::pair<bool, std::uint8_t>, unsigned> counts;
    for (const Channel& channel : module.channels()) {
        const bool input = channel.place.input;
        const std::uint8_t number = channel.record->number.value;
        all.emplace(Key{input, number, counts[{input, number}]++}, &channel);
    }
    return all;
}

std::string subjectOf(const Channel& channel)
{
    const char* const what = channel.place.input ? "input channel" : "output channel";
    return named(what, channel.record->number.value, channel.name);
}

std::string addressOf(const Channel& channel)
{
    return channel.place.symbol.empty() ? "none" : channel.place.symbol;
}

std::string kindText(const Channel& channel)
{
    return std::to_string(mxformat::channelKind(channel.record->kind.value)) + " of " +
           text::counted(channel.record->bitLength.value, "bit");
}

void comparePair(const Channel& old, const Channel& now, Differences& differences)
{
    const std::string subject = subjectOf(now);
    if (kindText(old) == kindText(now)) {
        if (addressOf(old) != addressOf(now)) {
            differences.add(Effect::Breaking, "channel", subject,
                            "moves from " + addressOf(old) + " to " + addressOf(now));
        }
    } else {
        differences.add(Effect::Breaking, "channel", subject,
                        "kind " + kindText(old) + " at " + addressOf(old) + " becomes kind " +
                            kindText(now) + " at " + addressOf(now));
    }
    differences.changed(Effect::Cosmetic, "channel", subject, "name", quoted(old.name),
                        quoted(now.name));
    differences.changed(Effect::Compatible, "channel", subject, "flag 6",
                        std::to_string(old.record->kind.value >> 6 & 1),
                        std::to_string(now.record->kind.value >> 6 & 1));
}

} // namespace

void compareChannels(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    const auto old = channelsByKey(before);
    const auto now = channelsByKey(after);
    for (const auto& [key, channel] : old) {
        const auto found = now.find(key);
        if (found == now.end()) {
            differences.add(Effect::Breaking, "channel", subjectOf(*channel),
                            "at " + addressOf(*channel) + " is gone");
        } else {
            comparePair(*channel, *found->second, differences);
        }
    }
    for (const auto& [key, channel] : now) {
        if (old.count(key) == 0) {
            differences.add(Effect::Compatible, "channel", subjectOf(*channel),
                            "at " + addressOf(*channel) + " is new");
        }
    }
}

} // namespace mxauthor
