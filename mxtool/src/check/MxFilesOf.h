#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns `path` itself or, for a directory, its files MX*.bin ordered by name. Throws a `Failure`
/// for a directory that cannot be read or has no such file.
std::vector<std::string> mxFilesOf(const std::string& path);

} // namespace mxtool
