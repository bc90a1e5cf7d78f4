#pragma once

#include "mxstation/Plan.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mxstation {

/// Returns the text of `station` in which the modules state the parameters in `registers`, those of
/// each module of `plan` as `PlannedModule::registers` has them: the plan of the new text has
/// exactly these registers. `plan` is that of the station.
///
/// Values that the station states already keep their place, others are added below their module,
/// those of a channel below the channel, if they differ from the defaults. Every other byte of the
/// text is kept, comments and line ends too; nothing changes if the plan has these registers.
///
/// The result is read and planned again before it is returned. Throws a `mxmodule::Failure` when
/// the plan has errors, when the station was made without a text, when registers have no value that
/// a station can state, and with the place of an entry that cannot be changed on its own, such as
/// one that an alias repeats.
MXSTATION_API std::string withParameters(const Station& station, const Plan& plan,
                                         const std::vector<std::vector<std::uint16_t>>& registers);

} // namespace mxstation
