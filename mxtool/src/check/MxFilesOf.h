#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns the files that `path` stands for: itself, or for a directory its files MX*.bin, ordered
/// by name. Throws a `Failure` for a directory that cannot be read or holds none.
std::vector<std::string> mxFilesOf(const std::string& path);

} // namespace mxtool
