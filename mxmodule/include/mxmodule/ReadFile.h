#pragma once

#include "mxmodule/MxmoduleApi.h"

#include <string>
#include <vector>

namespace mxmodule {

/// Returns the bytes of the file at `path`. Throws a `Failure` with the path and the reason.
MXMODULE_API std::vector<char> readFile(const std::string& path);

} // namespace mxmodule
