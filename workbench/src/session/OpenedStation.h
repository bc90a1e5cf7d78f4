#pragma once

#include <mutex>
#include <stdexcept>
#include <string>

namespace workbench {

/// The text of a station file, and the SHA-256 by which its versions differ.
struct FileContent
{
    std::string text;
    std::string version; ///< Empty: there is no such file.
};

/// The station file changed after the version that a page began from.
class FileChanged : public std::runtime_error
{
public:
    explicit FileChanged(FileContent found);

    const FileContent& present() const { return content; } ///< As the file is now.

private:
    FileContent content;
};

/// The station file that the workbench was started with. For several threads.
class OpenedStation
{
public:
    /// A link is followed now: what it leads to stays the file.
    explicit OpenedStation(const std::string& file);

    const std::string& path() const { return filePath; }
    std::string name() const; ///< Without its directory.

    /// Returns the content of the file as it is now. A file that was removed is empty, and without
    /// a version. Throws a `mxmodule::Failure` if there is a file and it cannot be read, or
    /// something else by now: another program may have put a link, a pipe or a device in its place.
    FileContent read() const;

    /// Replaces the file, or makes it again if it was removed and `from` is empty, and returns its
    /// new version. Throws `FileChanged` when it is not of version `from`, a `mxmodule::Failure`
    /// when it cannot be written; nothing is changed then.
    std::string save(const std::string& text, const std::string& from);

private:
    std::string filePath;
    std::string target; // without the links that it began with
    std::mutex saving;
};

} // namespace workbench
