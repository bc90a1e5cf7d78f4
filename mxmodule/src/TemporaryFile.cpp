#include "TemporaryFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

namespace mxmodule {

namespace {

constexpr mode_t ownerOnly = 0600;
constexpr mode_t ofNewFiles = 0666; // less what the process masks
constexpr mode_t permissionBits = 07777;

[[noreturn]] void failOf(const std::string& path)
{
    throw std::system_error(errno, std::generic_category(), path);
}

// Its length does not depend on that of the target's name.
std::string randomNameBeside(const std::string& target)
{
    std::uint64_t number = 0;
    if (getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) {
        failOf(target);
    }
    return (std::filesystem::path(target).parent_path() /
            fmt::format("mxtool.part-{:016x}", number))
        .string();
}

std::optional<mode_t> permissionsOf(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status.st_mode & permissionBits)
                                            : std::nullopt;
}

} // namespace

TemporaryFile::TemporaryFile(const std::string& replaced) : target(replaced)
{
    const auto permissions = permissionsOf(target);
    replacesFile = permissions.has_value();
    create(permissions ? ownerOnly : ofNewFiles);
    if (permissions) {
        takePermissions(*permissions);
    }
}

TemporaryFile::~TemporaryFile()
{
    remove();
}

// Another file of a random name is unlikely; that of a few is not possible by chance.
void TemporaryFile::create(mode_t mode)
{
    constexpr int mostTries = 8;
    for (int i = 0; i < mostTries && descriptor < 0; ++i) {
        path = randomNameBeside(target);
        descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (descriptor < 0 && errno != EEXIST) {
            break;
        }
    }
    if (descriptor < 0) {
        failOf(path);
    }
}

void TemporaryFile::takePermissions(mode_t mode) const
{
    if (fchmod(descriptor, mode) != 0) {
        const int error = errno;
        remove();
        errno = error;
        failOf(path);
    }
}

void TemporaryFile::write(const std::string& content)
{
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t count = ::write(descriptor, content.data() + done, content.size() - done);
        if (count < 0 && errno != EINTR) {
            failOf(path);
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    // Otherwise a power failure after the renaming could leave neither of the two contents. Some
    // file systems, such as those of other computers, cannot wait.
    if (replacesFile && fsync(descriptor) != 0 && errno != EINVAL && errno != ENOTSUP) {
        failOf(path);
    }
}

void TemporaryFile::replaceTarget()
{
    if (rename(path.c_str(), target.c_str()) != 0) {
        failOf(target);
    }
    isTemporary = false;
}

void TemporaryFile::remove() const
{
    if (isTemporary) {
        static_cast<void>(unlink(path.c_str()));
    }
    close(descriptor);
}

} // namespace mxmodule
