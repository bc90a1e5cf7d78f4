#pragma once

#include "folder/ConfinedFile.h"

#include <mxmodule/ModuleFile.h>

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// A file of a folder that was read.
struct ReadRecord
{
    std::string name;
    FileStamp stamp;
};

/// An mx file as it was built, and the files of the folder that were read for it.
struct BuiltModule
{
    ModuleFile file;
    std::vector<ReadRecord> read; ///< Its own first.
    std::size_t bytes = 0;        ///< About what it takes in memory.
};

/// Remembers mx files by name; the least recently used are forgotten. Many threads may use it.
class FileMemory
{
public:
    static constexpr std::size_t mostFiles = 512;
    static constexpr std::size_t mostBytes = std::size_t{128} << 20U;

    /// Returns the file called `name`, which may have changed since.
    std::optional<BuiltModule> find(const std::string& name);

    /// Remembers `built` as the file called `name`; one that is too large is not.
    void add(const std::string& name, const BuiltModule& built);

private:
    struct Remembered
    {
        BuiltModule built;
        std::uint64_t used = 0; // the larger, the later
    };

    void forgetOldest();

    std::mutex mutex;
    std::map<std::string, Remembered> files;
    std::size_t bytes = 0;
    std::uint64_t uses = 0;
};

} // namespace mxmodule
