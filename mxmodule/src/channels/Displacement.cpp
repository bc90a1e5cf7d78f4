#include "channels/Displacement.h"

#include <mxformat/ImageAllocator.h>

#include <algorithm>

namespace mxmodule {

namespace {

// The alignment of channels depends on their byte modulo the largest of them.
constexpr std::uint64_t largestChannel = 8; // in bytes

// Where a record's channel lies, in bytes from the beginning of the module's data.
using Places = std::vector<std::uint32_t>;

// The places of all records, those without channels included, with the data of both images at byte
// `first`. Addresses have 32 bits and begin again at 0.
Places placesFrom(const ChannelTable& map, std::uint64_t first)
{
    const auto begin = static_cast<std::uint32_t>(first);
    mxformat::ImageAllocator input(begin);
    mxformat::ImageAllocator output(begin);
    Places places;
    places.reserve(map.records.size());
    for (const mxformat::ChannelRecord& record : map.records) {
        auto& image = mxformat::isInput(record.kind) ? input : output;
        const auto place = image.take(mxformat::channelKind(record.kind), record.bitLength);
        places.push_back(place ? place->byte - begin : 0);
    }
    return places;
}

const ChannelTable::Data& dataOf(const ChannelTable& map, bool input)
{
    return input ? map.input : map.output;
}

std::uint32_t placeOf(const ChannelTable& map, std::size_t channel)
{
    const MappedChannel& mapped = map.channels[channel];
    return mapped.byteAddress - static_cast<std::uint32_t>(dataOf(map, mapped.isInput).firstByte);
}

template <typename Condition>
std::vector<std::size_t> channelsWith(const ChannelTable& map, Condition condition)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < map.channels.size(); ++i) {
        if (condition(i)) {
            positions.push_back(i);
        }
    }
    return positions;
}

bool liesOutside(const MappedChannel& channel, const ChannelTable::Data& data)
{
    const std::uint64_t begin = data.firstByte * 8;
    const std::uint64_t end = begin + data.size * 8;
    return channel.bits != 0 && (channel.firstBit < begin || channel.firstBit + channel.bits > end);
}

} // namespace

std::vector<std::size_t> displacedChannels(const ChannelTable& map)
{
    const Places atZero = placesFrom(map, 0);
    return channelsWith(
        map, [&](std::size_t i) { return placeOf(map, i) != atZero[map.recordOfChannel[i]]; });
}

std::vector<std::size_t> channelsOutside(const ChannelTable& map)
{
    return channelsWith(map, [&map](std::size_t i) {
        return liesOutside(map.channels[i], dataOf(map, map.channels[i].isInput));
    });
}

std::uint64_t undisplacedFrom(const ChannelTable& map, bool input)
{
    const Places atZero = placesFrom(map, 0);
    const auto isUndisplacedAt = [&](std::uint64_t first) {
        const Places places = placesFrom(map, first);
        return channelsWith(map,
                            [&](std::size_t i) {
                                const std::size_t record = map.recordOfChannel[i];
                                return map.channels[i].isInput == input &&
                                       places[record] != atZero[record];
                            })
            .empty();
    };
    std::uint64_t first = dataOf(map, input).firstByte;
    while (first % largestChannel != 0 && !isUndisplacedAt(first)) {
        ++first;
    }
    return first;
}

} // namespace mxmodule
