#pragma once

#include "channels/ChannelTable.h"
#include "channels/ProcessImage.h"

#include <mxmodule/ChannelMap.h>

#include <mutex>
#include <optional>
#include <utility>

namespace mxmodule {

/// What a channel map shares with its copies.
struct __attribute__((visibility("hidden"))) ChannelMap::Content
{
    /// The module's parts of both images.
    struct Areas
    {
        ImageArea input;
        ImageArea output;
    };

    explicit Content(ChannelTable made) : table(std::move(made)) {}

    /// Returns the parts of the images. Made at the first call.
    const Areas& areas() const;

    /// Returns the layout of the picture. Made at the first call.
    const ProcessImage& picture() const;

    ChannelTable table;

private:
    mutable std::once_flag searched;
    mutable std::once_flag drawn;
    mutable Areas found;
    mutable std::optional<ProcessImage> image;
};

} // namespace mxmodule
