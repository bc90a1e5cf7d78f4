#pragma once

#include "mxstation/Plan.h"

#include <string>

namespace mxstation {

/// Returns the text of `station` in which every module and reserved place states the addresses that
/// it has in `plan`, which is that of the station: later changes of the row move none. Every byte
/// of the text is kept, comments and line ends too; a station that states all of them is unchanged.
///
/// The result is read and planned again before it is returned. Throws a `mxmodule::Failure` when
/// the plan has errors, when the station was made without a text, and with the place of an entry
/// that cannot be changed on its own, such as one that an alias repeats.
MXSTATION_API std::string pinned(const Station& station, const Plan& plan);

} // namespace mxstation
