#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mxtool {

/// Throws a `Failure` naming `directory` unless it can be read and holds an mx file: the parser
/// takes an unreadable one for an empty one. The files are inputs of the call from here on.
void requireMxFiles(const std::string& directory);

/// Returns the paths of the files in `directory` that the parser takes for mx files.
std::vector<std::string> mxFilesIn(const std::string& directory);

/// Returns the module identifiers, as records have them, that the files of `directory` state, those
/// that cannot be translated included; nothing when a file does not state one.
std::optional<std::set<std::string>> statedModules(const std::string& directory);

/// Returns the names of the files of `directory` that state `module`, in order.
std::vector<std::string> filesStating(const std::string& module, const std::string& directory);

} // namespace mxtool
