#include "SqliteFile.h"

#include <array>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

namespace devices::database {

namespace {

// Whether the effective user of this process has the permission.
bool mayAccess(const std::string& path, int right)
{
    return faccessat(AT_FDCWD, path.c_str(), right, AT_EACCESS) == 0;
}

std::string directoryOf(const std::string& path)
{
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    return parent.empty() ? "." : parent.string();
}

// The write version of an SQLite file is byte 18 of its header: 2 means a write-ahead log.
bool keepsWriteAheadLog(const std::string& path)
{
    std::array<char, 19> header{};
    std::ifstream file(path, std::ios::binary);
    return file.read(header.data(), header.size()) && header[18] == 2;
}

bool cannotChange(const std::string& path)
{
    return mayAccess(path, F_OK) && !mayAccess(path, W_OK) && !mayAccess(directoryOf(path), W_OK) &&
           !mayAccess(path + "-wal", F_OK);
}

std::string asUri(const std::string& path)
{
    std::string uri = "file:";
    for (const char byte : path) {
        if (byte == '%' || byte == '?' || byte == '#') {
            uri += byte == '%' ? "%25" : byte == '?' ? "%3f" : "%23";
        } else {
            uri += byte;
        }
    }
    return uri;
}

} // namespace

std::string sqliteFileName(const std::string& path)
{
    if (cannotChange(path) && keepsWriteAheadLog(path)) {
        return asUri(path) + "?immutable=1";
    }
    // The driver would read "file:..." as a URI with options of its own.
    return path.compare(0, 5, "file:") == 0 ? "./" + path : path;
}

bool isMissing(const std::string& path)
{
    std::error_code ignored;
    return path != ":memory:" && !std::filesystem::exists(path, ignored);
}

std::string whyNotOpened(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        return "it is a directory";
    }
    const std::string directory = directoryOf(path);
    if (!std::filesystem::is_directory(directory, ignored)) {
        return "there is no directory " + directory;
    }
    if (std::filesystem::exists(path, ignored)) {
        return mayAccess(path, R_OK) ? "unable to open database file" : "no permission to read it";
    }
    return "no file can be created in " + directory;
}

} // namespace devices::database
