#pragma once

#include "channels/ChannelTable.h"
#include "channels/ProcessImage.h"

#include <mxmodule/ChannelMap.h>

namespace mxmodule {

/// What a channel map shares with its copies.
struct __attribute__((visibility("hidden"))) ChannelMap::Content
{
    explicit Content(ChannelTable made);

    ChannelTable table;
    ProcessImage image;
    ImageArea input;
    ImageArea output;
};

} // namespace mxmodule
