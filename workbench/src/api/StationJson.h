#pragma once

#include <mxstation/Plan.h>
#include <text/Json.h>

namespace workbench {

/// Returns what the text of `station` states of each entry, also if it has errors. `plan` is that
/// of the station: the entries of an `ok` one have positions and bytes in the images.
text::Json entriesJson(const mxstation::Station& station, const mxstation::Plan& plan);

} // namespace workbench
