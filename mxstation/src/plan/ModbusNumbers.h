#pragma once

#include "plan/PlanFindings.h"

namespace mxstation {

/// Returns whether the registers that `station` states have possible numbers; an error for each
/// that is not. The reader of stations takes no others, a host may state them.
bool requirePossibleNumbers(const Station& station, PlanFindings& findings);

} // namespace mxstation
