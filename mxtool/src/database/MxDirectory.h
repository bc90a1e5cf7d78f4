#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mxtool {

/// Throws a `Failure` naming `directory` unless it can be read: the parser takes an unreadable one
/// for an empty one.
void requireReadableDirectory(const std::string& directory);

/// Returns the paths of the files in `directory` that the parser takes for mx files.
std::vector<std::string> mxFilesIn(const std::string& directory);

/// Returns the module identifiers, as records have them, that the files of `directory` state, those
/// that cannot be translated included; nothing when a file does not state one.
std::optional<std::set<std::string>> statedModules(const std::string& directory);

} // namespace mxtool
