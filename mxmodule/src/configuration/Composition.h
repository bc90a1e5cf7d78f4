#pragma once

#include "TranslatedModule.h"

#include <mxmodule/Assignment.h>
#include <mxmodule/Configuration.h>

#include <vector>

namespace mxmodule {

/// Writes the values of `assignments` into `base`, an image of `module` of the right size, through
/// the parsing library. Checks all of them before it writes the first. The registers of the result
/// are left empty.
Composition compose(const TranslatedModule& module, const std::vector<char>& base,
                    const std::vector<Assignment>& assignments, ValueCheck check);

} // namespace mxmodule
