#include "channels/FreeBits.h"

#include <algorithm>

namespace mxmodule {

namespace {

// Consecutive bits from `begin` to before `end`.
struct Bits
{
    std::uint64_t begin;
    std::uint64_t end;
};

// The bits of each channel of an image, ordered by the first.
std::vector<Bits> bitsOfChannels(const ChannelTable& map, bool input)
{
    std::vector<Bits> all;
    all.reserve(map.channels.size());
    for (const MappedChannel& channel : map.channels) {
        if (channel.isInput == input && channel.bits != 0) {
            all.push_back({channel.firstBit, channel.firstBit + channel.bits});
        }
    }
    std::sort(all.begin(), all.end(), [](Bits a, Bits b) { return a.begin < b.begin; });
    return all;
}

void addRun(std::vector<BitRun>& runs, std::uint64_t begin, std::uint64_t end)
{
    if (begin >= end) {
        return;
    }
    if (!runs.empty() && runs.back().firstBit + runs.back().bits == begin) {
        runs.back().bits += end - begin;
    } else {
        runs.push_back({begin, end - begin});
    }
}

} // namespace

ImageArea areaOf(const ChannelTable& map, bool input)
{
    const ChannelTable::Data& data = input ? map.input : map.output;
    const std::uint64_t dataEnd = (data.firstByte + data.size) * 8;
    ImageArea area{data.firstByte, data.size, {}, {}};
    std::uint64_t free = data.firstByte * 8; // bits of the data up to here have a channel or a run
    std::uint64_t taken = 0;                 // one after the last bit of the channels so far
    std::uint64_t shared = 0;                // one after the last bit of the overlaps so far
    for (const Bits& channel : bitsOfChannels(map, input)) {
        addRun(area.free, free, std::min(channel.begin, dataEnd));
        free = std::max(free, channel.end);
        const std::uint64_t overlapEnd = std::min(channel.end, taken);
        addRun(area.overlapping, std::max(channel.begin, shared), overlapEnd);
        shared = std::max(shared, overlapEnd);
        taken = std::max(taken, channel.end);
    }
    addRun(area.free, free, dataEnd);
    return area;
}

} // namespace mxmodule
