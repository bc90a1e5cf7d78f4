#include "check/Checks.h"
#include <text/Counted.h>

#include <algorithm>
#include <map>
#include <set>

namespace mxauthor {

namespace {

const CheckRule channelRows[] = {
    {"channel-kind", warning,
     "The kind of a channel means no data: it gets no symbol and no address. Kind 31 states that "
     "explicitly.",
     "group 20d0, channel 1 \"Input 2\": kind 11 means no data, expected 1 to 9"},
    {"channel-bits", warning,
     "The number of bits is not that of the channel's kind; a bit field has 1 to 8.",
     "group 20d0, channel 0 \"Input 1\": 8 bits stated, its kind has 16"},
    {"channel-repeated", warning,
     "Two channels have the same number. Its parameters are in the Modbus registers once for each; "
     "an input and an output without parameters may share a number.",
     "group 20d0, channel 0 \"Input 1\": another channel has this number as well: name and "
     "parameters apply to both"},
    {"channel-overlap", error, "Two channels share bits of a process image.",
     "group 20d0, channel 3 \"Output 1\": QX0_0 shares bits with QX0_0 of channel 2 \"Output 1\""},
    {"symbol-repeated", error, "Two channels have the same IEC symbol.",
     "group 20d0, channel 3 \"Output 1\": has the symbol QX0_0 of channel 2 \"Output 1\""},
    {"channel-unaligned", note,
     "The address rules put a channel at a byte that is not a multiple of its size. Modules do "
     "this; some processors and fieldbuses may not accept it.",
     "group 20d0, channel 0 \"Input 1\": ID2 follows from the address rules, byte 2 is not a "
     "multiple of 4"},
    {"channel-unnamed", note,
     "A channel has no entry in group 20d7. Its name is \"channel_\" and its number.",
     "group 20d0, channel 2: has no name in group 20d7"},
    {"channel-name-repeated", warning,
     "A channel has two entries in group 20d7. Only the first one is read.",
     "group 20d7, channel 1: is named here again, only the first name is read"},
    {"channel-name-unused", warning, "Group 20d7 names a channel that does not exist.",
     "group 20d7, channel 9: is named here, but does not exist"},
};
const auto& [channelKind, channelBits, channelRepeated, channelOverlap, symbolRepeated,
             channelUnaligned, channelUnnamed, channelNameRepeated, channelNameUnused] =
    channelRows;

using Channel = ModuleView::Channel;

void checkKind(const Channel& channel, Findings& findings)
{
    const ChannelRecord& record = *channel.record;
    const unsigned kind = mxformat::channelKind(record.kind.value);
    const unsigned stated = record.bitLength.value;
    if (channel.place.symbol.empty()) {
        if (kind != mxformat::kindWithoutData) {
            findings.add(channelKind, record.kind.place, named(channel),
                         "kind " + std::to_string(kind) + " means no data, expected " +
                             datatypeNumbers());
        }
    } else if (kind != mxformat::bitFieldDatatype && stated != channel.place.bits) {
        findings.add(channelBits, record.bitLength.place, named(channel),
                     text::counted(stated, "bit") + " stated, its kind has " +
                         std::to_string(channel.place.bits));
    } else if (kind == mxformat::bitFieldDatatype && (stated == 0 || stated > 8)) {
        findings.add(channelBits, record.bitLength.place, named(channel),
                     text::counted(stated, "bit") + " stated, a bit field has 1 to 8");
    }
}

bool hasParameters(const ModuleView& module, std::uint8_t number)
{
    const auto& parameters = module.parameters();
    return std::any_of(parameters.begin(), parameters.end(), [number](const auto& parameter) {
        return parameter.record->channel.value == number;
    });
}

// An input and an output of one number are a pair that shares its name; that is harmless unless
// parameters are listed twice.
void checkNumber(const ModuleView& module, const Channel& channel,
                 std::map<std::uint8_t, std::set<bool>>& seen, Findings& findings)
{
    const Field<std::uint8_t>& number = channel.record->number;
    std::set<bool>& directions = seen[number.value];
    const bool sameDirection = directions.count(channel.place.input) != 0;
    const bool otherDirection = directions.count(!channel.place.input) != 0;
    directions.insert(channel.place.input);
    if (otherDirection && !sameDirection && !hasParameters(module, number.value)) {
        return;
    }
    if (sameDirection || otherDirection) {
        findings.add(channelRepeated, number.place, named(channel),
                     "another channel has this number as well: name and parameters apply to both");
    }
}

bool shareBits(const ChannelPlace& a, const ChannelPlace& b)
{
    return a.input == b.input && a.bits != 0 && b.bits != 0 && a.firstBit < b.firstBit + b.bits &&
           b.firstBit < a.firstBit + a.bits;
}

void checkOverlap(const std::vector<Channel>& channels, const Channel& channel, Findings& findings)
{
    for (const Channel* other = channels.data(); other != &channel; ++other) {
        if (shareBits(other->place, channel.place)) {
            findings.add(channelOverlap, channel.record->bitOffset.place, named(channel),
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
        findings.add(channelUnaligned, channel.record->number.place, named(channel),
                     place.symbol + " follows from the address rules, byte " +
                         std::to_string(place.byteAddress) + " is not a multiple of " +
                         std::to_string(place.naturalSize));
    }
}

void checkChannels(const ModuleView& module, Findings& findings)
{
    std::map<std::uint8_t, std::set<bool>> seen;
    for (const Channel& channel : module.channels()) {
        checkKind(channel, findings);
        checkNumber(module, channel, seen, findings);
    }
}

void checkChannelNames(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> numbers;
    for (const Channel& channel : module.channels()) {
        const bool first = numbers.insert(channel.record->number.value).second;
        if (first && module.channelName(channel.record->number.value) == nullptr) {
            findings.add(channelUnnamed, channel.record->number.place, named(channel),
                         "has no name in group 20d7");
        }
    }
    std::set<std::uint8_t> seen;
    const auto& names = module.contentOrNone<ChannelNames>(mxformat::group::channelNames);
    for (const ChannelName& entry : names.entries) {
        const Field<std::uint8_t>& number = entry.channel;
        const std::string subject = named("channel", number.value, "");
        if (!seen.insert(number.value).second) {
            findings.add(channelNameRepeated, number.place, subject,
                         "is named here again, only the first name is read");
        } else if (numbers.count(number.value) == 0) {
            findings.add(channelNameUnused, number.place, subject,
                         "is named here, but does not exist");
        }
    }
}

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
            findings.add(symbolRepeated, channel.record->number.place, named(channel),
                         "has the symbol " + channel.place.symbol + " of " + named(*first->second));
        }
    }
}

void checkAllOfChannels(const ModuleView& module, Findings& findings)
{
    checkChannels(module, findings);
    checkChannelNames(module, findings);
    checkProcessImage(module, findings);
}

} // namespace

const Check channelCheck(channelRows, checkAllOfChannels);

} // namespace mxauthor
