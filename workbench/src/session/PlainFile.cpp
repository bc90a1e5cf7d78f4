#include "session/PlainFile.h"

#include <mxmodule/Finding.h>

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace workbench {

namespace {

// Closed at its end.
struct OpenFile
{
    explicit OpenFile(const std::string& path)
        : descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY | O_NONBLOCK))
    {}
    ~OpenFile()
    {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    const int descriptor;
};

[[noreturn]] void rejectFile(const std::string& name, const std::string& reason)
{
    throw mxmodule::Failure(mxmodule::Origin::Input, name, "Cannot read the file: " + reason,
                            "put the station back in its place, or start mxtool serve again");
}

std::string reasonOf(int error)
{
    return error == ELOOP ? "found a symbolic link, expected the file that was opened"
                          : std::generic_category().message(error);
}

// Reads at most one byte more than a file may have.
std::string contentOf(const OpenFile& file, const std::string& name)
{
    constexpr std::size_t step = std::size_t{64} << 10;
    std::string content;
    while (content.size() <= mostBytesOfPlainFile) {
        const std::size_t before = content.size();
        content.resize(before + step);
        const ssize_t count = read(file.descriptor, content.data() + before, step);
        content.resize(before + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count == 0) {
            return content;
        }
        if (count < 0 && errno != EINTR) {
            rejectFile(name, reasonOf(errno));
        }
    }
    rejectFile(name, fmt::format("it has more than {} bytes, the most of a station",
                                 mostBytesOfPlainFile));
}

} // namespace

std::optional<std::string> textOfPlainFile(const std::string& path, const std::string& name)
{
    const OpenFile file(path);
    const int error = errno;
    if (file.descriptor < 0 && (error == ENOENT || error == ENOTDIR)) {
        return std::nullopt;
    }
    struct stat status = {};
    if (file.descriptor < 0) {
        rejectFile(name, reasonOf(error));
    }
    if (fstat(file.descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        rejectFile(name, S_ISDIR(status.st_mode)
                             ? "found a directory, expected the file that was opened"
                             : "found a pipe or a device, expected the file that was opened");
    }
    return contentOf(file, name);
}

} // namespace workbench
