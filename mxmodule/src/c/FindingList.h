#pragma once

#include <mxmodule/Finding.h>
#include <text/Json.h>

#include <vector>

namespace mxmodule {

/// Returns `findings` as the list of the schema "mxmodule.findings".
text::Json findingList(const std::vector<Finding>& findings);

} // namespace mxmodule
