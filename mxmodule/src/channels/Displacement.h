#pragma once

#include "channels/ChannelTable.h"

namespace mxmodule {

/// Returns the positions of the channels that lie elsewhere from the first byte of the module's
/// data of their image than they would with the data at byte 0.
std::vector<std::size_t> displacedChannels(const ChannelTable& map);

/// Returns the positions of the channels with a bit outside the module's data of their image.
std::vector<std::size_t> channelsOutside(const ChannelTable& map);

/// Returns the least byte, from the first of the module's data in an image on, at which none of the
/// channels there is displaced.
std::uint64_t undisplacedFrom(const ChannelTable& map, bool input);

} // namespace mxmodule
