#pragma once

#include "plan/PlanFindings.h"

#include <string>
#include <vector>

namespace mxstation {

/// Returns the name of each entry of `station`, in their order: its own, or for a module without
/// one its file's or identifier, made unique with _2, _3, ...; empty for a reserved place. A name
/// that is used twice is an error.
std::vector<std::string> entryNames(const Station& station, PlanFindings& findings);

} // namespace mxstation
