#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <sys/types.h>
#include <time.h>

namespace mxmodule {

/// What changes when the content of a file does.
struct FileStamp
{
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec modified = {};
    timespec changed = {};

    bool operator==(const FileStamp& other) const;
};

/// Returns whether a later write will change the stamp of a file read at the time `now`: the clock
/// of the file system has moved on since the last write.
bool isSettled(const FileStamp& stamp, const timespec& now);

/// Returns `name` without ".", ".." and repeated "/"; nothing if it is no name of a file in a
/// folder: empty, absolute, with a NUL byte, or leading out by "..".
std::optional<std::string> nameWithin(const std::string& name);

/// A regular file that is in a folder, opened so that nothing else can take its place. Pipes,
/// devices and what is outside are never opened for reading.
class ConfinedFile
{
public:
    static constexpr std::size_t mostBytes = std::size_t{16} << 20U;

    /// Opens the file `name`, as `nameWithin` returns it, below `root`, a path without links.
    ConfinedFile(const std::string& root, const std::string& name);
    ~ConfinedFile();
    ConfinedFile(const ConfinedFile&) = delete;
    ConfinedFile& operator=(const ConfinedFile&) = delete;

    /// Returns why there is nothing to read; empty if there is. The same for what does not exist
    /// and what is outside.
    const std::string& problem() const { return reason; }

    const FileStamp& stamp() const { return opened; }

    /// Returns the first bytes of the file, at most `most`; nothing when they cannot be read.
    std::optional<std::string> read(std::size_t most) const;

private:
    std::string problemOf(const std::string& root);

    int descriptor;
    FileStamp opened;
    std::string reason;
};

/// The content of a file in a folder, or why it has none.
struct [[nodiscard]] ConfinedContent
{
    std::string content;
    FileStamp stamp; ///< From before it was read.
    std::string problem;
};

/// Reads the file `name`, as someone stated it, below `root`.
ConfinedContent readConfined(const std::string& root, const std::string& name);

} // namespace mxmodule
