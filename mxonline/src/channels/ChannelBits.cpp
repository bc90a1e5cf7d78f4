#include "channels/ChannelBits.h"

#include <fmt/format.h>

namespace mxonline {

namespace {

using mxstation::ByteOrder;
using mxstation::Channel;
using mxstation::Plan;

bool isSet(const std::vector<std::uint8_t>& bytes, std::uint64_t bit)
{
    return (bytes[bit / 8] >> bit % 8 & 1) != 0;
}

void setBit(std::vector<std::uint8_t>& bytes, std::uint64_t bit, bool isOne)
{
    const auto mask = static_cast<std::uint8_t>(1U << bit % 8);
    std::uint8_t& byte = bytes[bit / 8];
    byte = static_cast<std::uint8_t>(isOne ? byte | mask : byte & ~mask);
}

// The place in the image of each bit of a value, which is all that byte orders and kinds differ in.
class BitPlaces
{
public:
    BitPlaces(const Plan& plan, const Channel& channel)
        : first(channel.firstBit - imageOf(plan, channel).offset * 8),
          bits(channel.bits),
          isReversed(!channel.isBitField && plan.layout.byteOrder == ByteOrder::Big)
    {}

    std::uint64_t of(unsigned bit) const
    {
        const unsigned byte = isReversed ? bits / 8 - 1 - bit / 8 : bit / 8;
        return first + byte * 8ULL + bit % 8;
    }

private:
    std::uint64_t first;
    unsigned bits;
    bool isReversed;
};

} // namespace

const mxstation::ImageBytes& imageOf(const Plan& plan, const Channel& channel)
{
    return channel.isInput ? plan.input : plan.output;
}

std::optional<std::string> reasonWithoutValue(const Plan& plan, const Channel& channel)
{
    if (channel.bits == 0) {
        return "has no bits";
    }
    const mxstation::ImageBytes& image = imageOf(plan, channel);
    const std::uint64_t last = (channel.firstBit + channel.bits - 1) / 8;
    if (channel.firstBit / 8 < image.offset || last >= image.end()) {
        return fmt::format("is outside the {} image", channel.isInput ? "input" : "output");
    }
    return std::nullopt;
}

mxstation::ImageBytes bytesOf(const Plan& plan, const Channel& channel)
{
    const std::uint64_t first = channel.firstBit / 8;
    const std::uint64_t last = (channel.firstBit + channel.bits - 1) / 8;
    return {first - imageOf(plan, channel).offset, last - first + 1};
}

ValueBits bitsIn(const Plan& plan, const Channel& channel, const ProcessImage& image)
{
    const BitPlaces places(plan, channel);
    ValueBits value((channel.bits + 7) / 8);
    for (unsigned bit = 0; bit < channel.bits; ++bit) {
        setBit(value, bit, isSet(image, places.of(bit)));
    }
    return value;
}

void putBits(const Plan& plan, const Channel& channel, const ValueBits& bits, ProcessImage& image)
{
    const BitPlaces places(plan, channel);
    for (unsigned bit = 0; bit < channel.bits; ++bit) {
        setBit(image, places.of(bit), isSet(bits, bit));
    }
}

} // namespace mxonline
