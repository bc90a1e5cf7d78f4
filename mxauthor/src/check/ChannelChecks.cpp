#include "check/Checks.h"
#include "mxauthor/Counted.h"

#include <algorithm>
#include <map>
#include <set>

namespace mxauthor {

namespace {

using Channel = ModuleView::Channel;

constexpr std::uint8_t kindBits = 0x1F;
constexpr std::uint8_t bitKind = 5;
constexpr std::uint8_t noDataKind = 31;

void checkKind(const Channel& channel, Findings& findings)
{
    const ChannelRecord& record = *channel.record;
    const unsigned kind = record.kind.value & kindBits;
    const unsigned stated = record.bitLength.value;
    if (channel.place.symbol.empty()) {
        if (kind != noDataKind) {
            findings.add("channel-kind", record.kind.place, named(channel),
                         "kind " + std::to_string(kind) + " stands for no data, expected 1 to 9");
        }
    } else if (kind != bitKind && stated != channel.place.bits) {
        findings.add("channel-bits", record.bitLength.place, named(channel),
                     counted(stated, "bit") + " stated, its kind has " +
                         std::to_string(channel.place.bits));
    } else if (kind == bitKind && (stated == 0 || stated > 8)) {
        findings.add("channel-bits", record.bitLength.place, named(channel),
                     counted(stated, "bit") + " stated, a bit field has 1 to 8");
    }
}

bool hasParameters(const ModuleView& module, std::uint8_t number)
{
    const auto& parameters = module.parameters();
    return std::any_of(parameters.begin(), parameters.end(), [number](const auto& parameter) {
        return parameter.record->channel.value == number;
    });
}

// An input and an output of one number are a pair that shares its name; that is no harm as long as
// no parameters come twice.
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
        findings.add("channel-repeated", number.place, named(channel),
                     "another channel has this number as well: name and parameters stand for both");
    }
}

} // namespace

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
    const auto* const names = module.content<ChannelNames>(0x20D7);
    std::set<std::uint8_t> numbers;
    for (const Channel& channel : module.channels()) {
        const bool first = numbers.insert(channel.record->number.value).second;
        if (first && module.channelName(channel.record->number.value) == nullptr) {
            findings.add("channel-unnamed", channel.record->number.place, named(channel),
                         "has no name in group 20d7");
        }
    }
    std::set<std::uint8_t> seen;
    for (std::size_t i = 0; names != nullptr && i < names->entries.size(); ++i) {
        const Field<std::uint8_t>& number = names->entries[i].channel;
        const std::string subject = named("channel", number.value, "");
        if (!seen.insert(number.value).second) {
            findings.add("channel-name-repeated", number.place, subject,
                         "is named here again, only the first name is read");
        } else if (numbers.count(number.value) == 0) {
            findings.add("channel-name-unused", number.place, subject,
                         "is named here, but does not exist");
        }
    }
}

} // namespace mxauthor
