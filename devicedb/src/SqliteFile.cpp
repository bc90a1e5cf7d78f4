#include "SqliteFile.h"

#include <filesystem>

#include <unistd.h>

namespace devices::database {

std::string sqliteFileName(const std::string& path)
{
    // The driver would read "file:..." as a URI with options of its own.
    return path.compare(0, 5, "file:") == 0 ? "./" + path : path;
}

std::string whyNotOpened(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        return "it is a directory";
    }
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    const std::string directory = parent.empty() ? "." : parent.string();
    if (!std::filesystem::is_directory(directory, ignored)) {
        return "there is no directory " + directory;
    }
    if (std::filesystem::exists(path, ignored)) {
        return access(path.c_str(), R_OK) == 0 ? "unable to open database file"
                                               : "no permission to read it";
    }
    return "no file can be created in " + directory;
}

} // namespace devices::database
