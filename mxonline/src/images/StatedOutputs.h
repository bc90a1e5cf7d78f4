#pragma once

#include "channels/ChannelBits.h"
#include "channels/ChannelNames.h"

#include <mxonline/OutputSetting.h>
#include <mxstation/Plan.h>

#include <cstddef>
#include <vector>

namespace mxonline {

/// Output channels of a plan, each once, and bits for them.
struct StatedOutputs
{
    std::vector<std::size_t> channels; ///< Indexes in `Plan::channels`, in the order of the values.
    std::vector<ValueBits> bits;       ///< Of each channel.
};

/// Returns what `values` state; `names` are those of `plan`. Throws as the constructor of
/// `OutputSetting`.
StatedOutputs statedOutputs(const mxstation::Plan& plan, const ChannelNames& names,
                            const std::vector<OutputValue>& values);

} // namespace mxonline
