#pragma once

#include <mxmodule/Finding.h>
#include <mxstation/Station.h>

#include <vector>

namespace workbench {

/// Returns why `station`, which an edit would have made, is refused: its errors, without places,
/// lines and excerpts, since its text is not shown.
std::vector<mxmodule::Finding> errorsWithoutPlaces(mxstation::Station station);

} // namespace workbench
