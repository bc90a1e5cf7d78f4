#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <sys/stat.h>
#include <sys/types.h>

namespace mxtool {

/// Returns what the link at `path` leads to, over further links, whether that is there yet or not;
/// `path` where it is no link.
std::filesystem::path behindLinks(std::filesystem::path path);

/// Which file a path, a descriptor or a name means, however it is spelled.
///
/// A file that exists is known by device and inode, so hard links to it are the same. Each is known
/// by its name in its directory too, so a file that is replaced, or not there yet, is found again.
/// Devices and pipes are the same as nothing: writing to one loses nothing.
class FilePlace
{
public:
    /// The file at `path`, there or not.
    static FilePlace ofPath(const std::string& path);

    /// The file that is open as `descriptor`.
    static FilePlace ofDescriptor(int descriptor);

    /// Something that is no file, such as a database of a server, known by its name alone.
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
    std::string name; // in the directory; empty: known by `file` alone
};

} // namespace mxtool
