#pragma once

#include "folder/ConfinedFile.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace mxmodule {

/// Lists the mx files and text forms below a directory. Remembers which files are such. Many
/// threads may use it.
class FolderNames
{
public:
    static constexpr std::size_t mostNames = 2000;
    static constexpr std::size_t mostEntries = 20000;
    static constexpr std::size_t mostDirectories = 8; ///< One in the other.

    /// Returns the names of those below `root`, a path without links, sorted.
    std::vector<std::string> below(const std::string& root);

private:
    struct Judged
    {
        FileStamp stamp;
        bool isModule = false;
    };
    using JudgedFiles = std::map<std::string, Judged>;

    JudgedFiles judgedBefore();
    void remember(JudgedFiles files);

    std::mutex mutex;
    JudgedFiles known;
};

} // namespace mxmodule
