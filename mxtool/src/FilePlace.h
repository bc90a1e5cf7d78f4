#pragma once

#include <optional>
#include <string>

#include <sys/stat.h>
#include <sys/types.h>

namespace mxtool {

/// The identity of a file, given by a path, a descriptor or a name.
///
/// An existing file is identified by device and inode, so hard links are equal. In addition each is
/// identified by its directory and name, which covers files that are replaced or do not exist yet.
/// Devices and pipes equal nothing: writing to them loses nothing.
class FilePlace
{
public:
    /// The file at `path`, which need not exist.
    static FilePlace ofPath(const std::string& path);

    /// The file that is open as `descriptor`.
    static FilePlace ofDescriptor(int descriptor);

    /// Something other than a file, such as a database on a server, identified by its name.
    static FilePlace ofName(const std::string& name);

    bool isSameAs(const FilePlace& other) const;

private:
    struct Node
    {
        dev_t device;
        ino_t inode;
        bool operator==(const Node& other) const
        {
            return device == other.device && inode == other.inode;
        }
    };

    static std::optional<Node> nodeOf(int failure, const struct stat& status);

    std::optional<Node> file;
    std::optional<Node> directory;
    std::string name; // in the directory; empty: identified by `file` alone
};

} // namespace mxtool
