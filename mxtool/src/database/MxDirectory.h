#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mxtool {

/// The entries of a directory that are called like mx files.
struct MxDirectory
{
    std::string path;
    std::vector<std::string> files; ///< Paths of files and of links to files, in no order.
    unsigned leftOut = 0;           ///< How many entries are something else, a pipe for one.
};

/// Lists the directory at `path` and reports each entry that it leaves out. The files are inputs of
/// the call from here on. Throws a `Failure` naming the directory unless it can be read and holds a
/// file.
MxDirectory listMxDirectory(const std::string& path);

/// Returns the module identifiers, as records have them, that the files of `directory` state, those
/// that cannot be translated included; nothing when a file does not state one, or an entry was left
/// out.
[[nodiscard]] std::optional<std::set<std::string>> statedModules(const MxDirectory& directory);

/// Returns the names of the files of `directory` that state `module`, in order.
std::vector<std::string> filesStating(const std::string& module, const MxDirectory& directory);

} // namespace mxtool
