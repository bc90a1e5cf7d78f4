#pragma once

#include "channels/ChannelTable.h"

namespace mxmodule {

/// Returns the module's part of an image: the bits of its data without a channel, and the bits of
/// more than one channel, which may be outside its data.
ImageArea areaOf(const ChannelTable& map, bool input);

} // namespace mxmodule
