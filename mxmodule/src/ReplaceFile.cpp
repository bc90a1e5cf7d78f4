#include "mxmodule/ReplaceFile.h"

#include "TemporaryFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

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
    try {
        TemporaryFile beside(followLinks(path));
        beside.write(content);
        beside.replaceTarget();
    } catch (const std::system_error& failure) {
        throw cannotWrite(path, failure.code().value());
    }
}

void requireReplaceable(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw cannotWrite(path, EISDIR);
    }
    try {
        const TemporaryFile beside(followLinks(path));
    } catch (const std::system_error& failure) {
        throw cannotWrite(path, failure.code().value());
    }
}

} // namespace mxmodule
