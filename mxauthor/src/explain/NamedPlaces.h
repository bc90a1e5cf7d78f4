#pragma once

#include "module/ModuleView.h"
#include "mxauthor/Explain.h"

namespace mxauthor {

/// Returns where the parameters, channels and texts of `module` lie, ordered by their place.
std::vector<NamedPlace> namedPlaces(const ModuleView& module);

} // namespace mxauthor
