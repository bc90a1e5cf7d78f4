#include "mxmodule/ReplaceFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace mxmodule {

namespace {

std::string hintForWrite(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        return "name a file in this directory";
    }
    const auto directory = std::filesystem::path(path).parent_path();
    return directory.empty() || std::filesystem::exists(directory, ignored)
               ? ""
               : "there is no directory " + directory.string() + ", create it first";
}

// The new file gets the permissions of the file that it replaces.
void takePermissions(const std::filesystem::path& from, const std::filesystem::path& to)
{
    const auto status = std::filesystem::status(from);
    if (std::filesystem::exists(status)) {
        std::filesystem::permissions(to, status.permissions());
    }
}

// Its name does not depend on the length of the target's.
std::filesystem::path temporaryBeside(const std::filesystem::path& target)
{
    return target.parent_path() / ("mxtool.part-" + std::to_string(getpid()));
}

// Takes over the permissions of `replaced`, if it exists, before the first byte is written.
// `path` is the name for messages.
void writeTemporary(const std::filesystem::path& temporary, const std::filesystem::path& replaced,
                    const std::string& content, const std::string& path)
{
    errno = 0;
    std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
    if (file) {
        takePermissions(replaced, temporary);
        errno = 0;
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        file.flush();
    }
    if (!file) {
        throw cannotWrite(path, errno);
    }
}

} // namespace

Failure cannotWrite(const std::string& path, int systemError)
{
    const std::string reason = systemError != 0 ? std::strerror(systemError) : "write failed";
    return {Origin::Output, path, "Cannot write: " + reason, hintForWrite(path)};
}

std::string followLinks(const std::string& path)
{
    constexpr int longestChain = 40; // links may form a cycle
    std::error_code ignored;
    std::filesystem::path target = path;
    for (int i = 0; i < longestChain && std::filesystem::is_symlink(target, ignored); ++i) {
        target = target.parent_path() / std::filesystem::read_symlink(target, ignored);
    }
    return target.string();
}

void replaceFile(const std::string& path, const std::string& content)
{
    const std::filesystem::path target = followLinks(path);
    const auto beside = temporaryBeside(target);
    try {
        writeTemporary(beside, target, content, path);
        std::filesystem::rename(beside, target);
    } catch (const std::filesystem::filesystem_error& failure) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        throw cannotWrite(path, failure.code().value());
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        throw;
    }
}

void requireReplaceable(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw cannotWrite(path, EISDIR);
    }
    const auto beside = temporaryBeside(followLinks(path));
    writeTemporary(beside, {}, "", path);
    std::filesystem::remove(beside, ignored);
}

} // namespace mxmodule
