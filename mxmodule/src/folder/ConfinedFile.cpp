#include "folder/ConfinedFile.h"

#include <text/Counted.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <utility>

namespace mxmodule {

namespace {

constexpr const char* notThere = "there is no such file in the folder";

bool isSameTime(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

std::string pathOfDescriptor(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

// The path of an open file without links, as the system knows it; empty if it does not tell.
std::string resolvedPath(int descriptor)
{
    std::array<char, PATH_MAX> path{};
    const ssize_t size = readlink(pathOfDescriptor(descriptor).c_str(), path.data(), path.size());
    const bool isWhole = size > 0 && static_cast<std::size_t>(size) < path.size();
    return isWhole ? std::string(path.data(), static_cast<std::size_t>(size)) : std::string();
}

bool isBelow(const std::string& path, const std::string& root)
{
    const std::string begin = root == "/" ? root : root + "/";
    return path == root || path.compare(0, begin.size(), begin) == 0;
}

FileStamp stampOf(const struct stat& status)
{
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim, status.st_ctim};
}

// Reads until `content` is full or the file ends. Returns whether nothing failed.
bool fillFrom(int descriptor, std::string& content)
{
    std::size_t size = 0;
    while (size < content.size()) {
        const ssize_t count = ::read(descriptor, content.data() + size, content.size() - size);
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            return false;
        }
        size += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    content.resize(size);
    return true;
}

} // namespace

bool FileStamp::operator==(const FileStamp& other) const
{
    return device == other.device && inode == other.inode && size == other.size &&
           isSameTime(modified, other.modified) && isSameTime(changed, other.changed);
}

bool isSettled(const FileStamp& stamp, const timespec& now)
{
    // Whole seconds: a file system that has no finer times, at worst every other second.
    const double step = stamp.modified.tv_nsec == 0 ? 2.5 : 0.05;
    return static_cast<double>(now.tv_sec - stamp.modified.tv_sec) +
               static_cast<double>(now.tv_nsec - stamp.modified.tv_nsec) / 1e9 >
           step;
}

std::optional<std::string> nameWithin(const std::string& name)
{
    const std::filesystem::path path(name);
    if (name.empty() || name.find('\0') != std::string::npos || path.is_absolute()) {
        return std::nullopt;
    }
    const std::filesystem::path within = path.lexically_normal();
    return *within.begin() == ".." ? std::nullopt : std::optional(within.string());
}

ConfinedFile::ConfinedFile(const std::string& root, const std::string& name)
    : descriptor(open((root + "/" + name).c_str(), O_PATH | O_CLOEXEC)), reason(problemOf(root))
{}

ConfinedFile::~ConfinedFile()
{
    if (descriptor >= 0) {
        close(descriptor);
    }
}

// Opening with O_PATH identifies the file without reading it, and does not wait, even for a pipe.
std::string ConfinedFile::problemOf(const std::string& root)
{
    struct stat status = {};
    if (descriptor < 0 || !isBelow(resolvedPath(descriptor), root) ||
        fstat(descriptor, &status) != 0) {
        return notThere;
    }
    opened = stampOf(status);
    if (S_ISDIR(status.st_mode)) {
        return "found a directory, expected a file";
    }
    if (!S_ISREG(status.st_mode)) {
        return "found a pipe or a device, expected a file";
    }
    if (static_cast<std::uintmax_t>(status.st_size) > mostBytes) {
        return "it has " + text::counted(static_cast<std::uint64_t>(status.st_size), "byte") +
               ", expected at most 16777216";
    }
    return "";
}

std::optional<std::string> ConfinedFile::read(std::size_t most) const
{
    const int reading =
        open(pathOfDescriptor(descriptor).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (reading < 0) {
        return std::nullopt;
    }
    std::string content(most, '\0');
    const bool isRead = fillFrom(reading, content);
    const int failed = errno;
    close(reading);
    errno = failed;
    return isRead ? std::optional(std::move(content)) : std::nullopt;
}

ConfinedContent readConfined(const std::string& root, const std::string& name)
{
    const auto within = nameWithin(name);
    if (!within) {
        return {"", {}, "it is not the name of a file in the folder"};
    }
    const ConfinedFile file(root, *within);
    if (!file.problem().empty()) {
        return {"", {}, file.problem()};
    }
    auto content = file.read(static_cast<std::size_t>(file.stamp().size));
    if (!content) {
        return {"", {}, std::strerror(errno)};
    }
    return {std::move(*content), file.stamp(), ""};
}

} // namespace mxmodule
