#include "check/Checks.h"

#include <algorithm>
#include <map>

namespace mxauthor {

namespace {

using Channel = ModuleView::Channel;

bool shareBits(const ChannelPlace& a, const ChannelPlace& b)
{
    return a.input == b.input && a.bits != 0 && b.bits != 0 && a.firstBit < b.firstBit + b.bits &&
           b.firstBit < a.firstBit + a.bits;
}

void checkOverlap(const std::vector<Channel>& channels, const Channel& channel, Findings& findings)
{
    for (const Channel* other = channels.data(); other != &channel; ++other) {
        if (shareBits(other->place, channel.place)) {
            findings.add("channel-overlap", channel.record->bitOffset.place, named(channel),
                         channel.place.symbol + " shares bits with " + other->place.symbol +
                             " of " + named(*other));
            return;
        }
    }
}

void checkAlignment(const Channel& channel, Findings& findings)
{
    const ChannelPlace& place = channel.place;
    if (place.byteAddress % place.naturalSize != 0) {
        findings.add("channel-unaligned", channel.record->number.place, named(channel),
                     place.symbol + " follows from the address rules, byte " +
                         std::to_string(place.byteAddress) + " is no multiple of " +
                         std::to_string(place.naturalSize));
    }
}

} // namespace

void checkProcessImage(const ModuleView& module, Findings& findings)
{
    std::map<std::string, const Channel*> symbols;
    for (const Channel& channel : module.channels()) {
        if (channel.place.symbol.empty()) {
            continue;
        }
        checkOverlap(module.channels(), channel, findings);
        checkAlignment(channel, findings);
        const auto [first, isNew] = symbols.emplace(channel.place.symbol, &channel);
        if (!isNew) {
            findings.add("symbol-repeated", channel.record->number.place, named(channel),
                         "has the symbol " + channel.place.symbol + " of " + named(*first->second));
        }
    }
}

} // namespace mxauthor
