#pragma once

#include <mxmodule/ChannelMap.h>
#include <mxmodule/Finding.h>
#include <mxstation/Layout.h>

#include <vector>

namespace mxstation {

/// Returns a warning for each image in which channels of a module lie elsewhere from its first byte
/// than at offset 0, or outside its data; it names an address that cures it, if a station with
/// `layout` can state one.
std::vector<mxmodule::Finding> fitFindings(const mxmodule::ChannelMap& map, const Layout& layout);

} // namespace mxstation
