#pragma once

#include "mxauthor/groups/Channels.h"

#include <string>

namespace mxauthor {

/// Where a channel lies in the process image of a module that starts at byte 0.
struct ChannelPlace
{
    std::string symbol; ///< IEC symbol; empty: the channel has no place.
    bool input = false;
    std::uint32_t byteAddress = 0;
    std::uint64_t firstBit = 0; ///< Counted from byte 0.
    unsigned bits = 0;
    std::uint32_t naturalSize = 1; ///< Bytes by which such values are best aligned.
};

/// Returns the places of `records`.
std::vector<ChannelPlace> channelPlaces(const std::vector<ChannelRecord>& records);

} // namespace mxauthor
