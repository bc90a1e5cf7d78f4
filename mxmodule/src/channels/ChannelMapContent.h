#pragma once

#include "channels/ChannelTable.h"
#include "channels/ProcessImage.h"

#include <mxmodule/ChannelMap.h>

#include <mutex>

namespace mxmodule {

/// What a channel map shares with its copies.
struct __attribute__((visibility("hidden"))) ChannelMap::Content
{
    /// The layout of the picture, and what it tells of the images.
    struct Picture
    {
        ProcessImage image;
        ImageArea input;
        ImageArea output;
    };

    explicit Content(ChannelTable made) : table(std::move(made)) {}

    /// Returns the picture. Made at the first call.
    const Picture& picture() const;

    ChannelTable table;

private:
    mutable std::once_flag drawn;
    mutable Picture drawing;
};

} // namespace mxmodule
