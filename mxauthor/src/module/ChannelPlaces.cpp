#include "module/ChannelPlaces.h"

#include <mxformat/ImageAllocator.h>

#include <array>

namespace mxauthor {

namespace {

ChannelPlace placeOf(const mxformat::ChannelPlace& taken, const ChannelRecord& record)
{
    const std::uint8_t bitLength = record.bitLength.value;
    const std::uint8_t bitOffset = record.bitOffset.value;
    ChannelPlace place;
    place.input = mxformat::isInput(record.kind.value);
    place.symbol = taken.symbol(place.input, bitLength, bitOffset);
    place.byteAddress = taken.byte;
    place.firstBit = std::uint64_t{taken.byte} * 8;
    if (taken.isBitField) {
        // The byte address includes whole bytes already: only the place within the byte matters.
        place.firstBit += bitOffset % 8U;
        place.bits = bitLength;
    } else {
        place.naturalSize = taken.size;
        place.bits = taken.size * 8U;
    }
    return place;
}

} // namespace

std::vector<ChannelPlace> channelPlaces(const std::vector<ChannelRecord>& records)
{
    std::array<mxformat::ImageAllocator, 2> images; // of outputs and inputs
    std::vector<ChannelPlace> places;
    places.reserve(records.size());
    for (const ChannelRecord& record : records) {
        const std::uint8_t kind = record.kind.value;
        const bool input = mxformat::isInput(kind);
        const auto taken =
            images.at(input ? 1 : 0).take(mxformat::channelKind(kind), record.bitLength.value);
        places.push_back(taken ? placeOf(*taken, record) : ChannelPlace{"", input});
    }
    return places;
}

} // namespace mxauthor
