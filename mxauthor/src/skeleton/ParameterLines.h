#pragma once

#include "ChannelGroups.h"

namespace mxauthor {

/// Returns parameters for these channels, in this order, with what they refer to: an example of
/// each kind, as far as a parameter block has space.
std::string parameterSections(const std::vector<ChannelGroup>& groups);

} // namespace mxauthor
