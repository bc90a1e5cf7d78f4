#pragma once

#include <string>

#include <sys/types.h>

namespace mxmodule {

/// A new, empty file in the directory of another one, which it can replace. Removed at the end,
/// unless it did.
///
/// Its name is random and it is made exclusively, so that no file or link that someone else puts
/// there is written to. All operations throw a `std::system_error`.
class TemporaryFile
{
public:
    /// Beside the file at `target`, with its permissions if it exists, and no others at any time.
    explicit TemporaryFile(const std::string& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Writes `content`; if there is a file to be replaced, waits until it is on the disk.
    void write(const std::string& content);

    /// Becomes the file at `target`, in place of what is there.
    void replaceTarget();

private:
    void create(mode_t mode);
    void takePermissions(mode_t mode) const;
    void remove() const;

    std::string target;
    std::string path;
    int descriptor = -1;
    bool replacesFile = false;
    bool isTemporary = true;
};

} // namespace mxmodule
