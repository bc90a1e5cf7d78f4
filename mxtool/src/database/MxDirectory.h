#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mxtool {

/// The entries of a directory with names of mx files.
struct MxDirectory
{
    std::string path;
    std::vector<std::string> files; ///< Paths of files and of links to files, unordered.
    unsigned leftOut = 0;           ///< The number of entries of another type, such as pipes.
};

/// Lists the directory at `path`, reports each entry left out, and registers the files as inputs.
/// Throws a `Failure` naming the directory if it cannot be read or has no mx file.
MxDirectory listMxDirectory(const std::string& path);

/// Returns the module identifiers in the files of `directory`, as in records, including those of
/// files that cannot be translated. Returns nothing if a file has no identifier or an entry was
/// left out.
[[nodiscard]] std::optional<std::set<std::string>> statedModules(const MxDirectory& directory);

/// Returns the names of the files of `directory` with the identifier `module`, sorted.
std::vector<std::string> filesStating(const std::string& module, const MxDirectory& directory);

/// Returns `path` itself or, for a directory, its files MX*.bin ordered by name. Throws a `Failure`
/// for a directory that cannot be read or has no such file.
std::vector<std::string> mxFilesOf(const std::string& path);

} // namespace mxtool
