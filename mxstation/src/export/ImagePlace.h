#pragma once

#include <mxstation/Plan.h>

#include <cstdint>

namespace mxstation {

/// Returns the image of `plan` in which `channel` is.
inline const ImageBytes& imageOf(const Plan& plan, const Channel& channel)
{
    return channel.isInput ? plan.input : plan.output;
}

/// Returns whether every byte of `channel` is in the image; without bits, the one it begins in.
inline bool liesInImage(const Plan& plan, const Channel& channel)
{
    const ImageBytes& image = imageOf(plan, channel);
    const std::uint64_t first = channel.firstBit / 8;
    const std::uint64_t last = (channel.firstBit + (channel.bits == 0 ? 0 : channel.bits - 1)) / 8;
    return first >= image.offset && last < image.end();
}

/// Returns the first byte of `channel`, which lies in the image, counted from the image's first.
inline std::uint64_t byteInImage(const Plan& plan, const Channel& channel)
{
    return channel.firstBit / 8 - imageOf(plan, channel).offset;
}

} // namespace mxstation
