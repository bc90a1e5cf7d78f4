#include "mxmodule/Population.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace mxmodule {

namespace {

namespace fs = std::filesystem;

// The type of a directory entry that is not a file; reading it may never end.
std::optional<std::string> foundInsteadOfFile(const fs::path& path)
{
    std::error_code ignored;
    switch (fs::status(path, ignored).type()) {
    case fs::file_type::regular:
        return std::nullopt;
    case fs::file_type::directory:
        return "a directory";
    case fs::file_type::fifo:
        return "a pipe";
    case fs::file_type::socket:
        return "a socket";
    case fs::file_type::block:
    case fs::file_type::character:
        return "a device";
    default:
        return "a link that leads to no file";
    }
}

void addEntry(const std::string& path, MxDirectory& directory, Observer* observer)
{
    if (const auto found = foundInsteadOfFile(path)) {
        directory.leftOut.push_back(
            {Severity::Error, path, "Found " + *found + ", expected a file: it is left out"});
        return;
    }
    if (observer != nullptr) {
        observer->reads(path);
    }
    directory.files.push_back(path);
}

// The parser reads files of these names when it populates a database: MX*.bin.
bool isMxFileName(const std::string& name)
{
    constexpr std::size_t shortest = 7;
    return name.size() >= shortest && name.compare(0, 2, "MX") == 0 &&
           name.compare(name.size() - 4, 4, ".bin") == 0;
}

// The paths of the entries whose names are those of mx files, unordered.
std::vector<std::string> entriesOf(const std::string& path)
{
    std::vector<std::string> entries;
    std::error_code error;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (isMxFileName(entry->path().filename().string())) {
            entries.push_back(entry->path().string());
        }
    }
    if (error) {
        std::error_code ignored;
        throw Failure(Origin::Input, path, "Cannot read the directory: " + error.message(),
                      fs::is_regular_file(path, ignored) ? "name the directory that holds this file"
                                                         : "");
    }
    return entries;
}

// Reading a pipe or device may never end.
void requireNoDevice(const std::string& path)
{
    std::error_code ignored;
    const auto type = fs::status(path, ignored).type();
    if (type == fs::file_type::fifo || type == fs::file_type::character ||
        type == fs::file_type::block || type == fs::file_type::socket) {
        throw Failure(Origin::Input, path, "Found a pipe or a device, expected a file");
    }
}

[[noreturn]] void rejectEmpty(const MxDirectory& directory)
{
    std::vector<Finding> findings = directory.leftOut;
    findings.push_back(
        {Severity::Error, directory.path,
         "The directory holds no file MX*.bin, nothing is inserted",
         "files of other names, and those in directories below it, are not looked at"});
    throw Failure(std::move(findings));
}

} // namespace

MxDirectory listMxDirectory(const std::string& path, Observer* observer)
{
    MxDirectory directory{path};
    for (const std::string& entry : entriesOf(path)) {
        addEntry(entry, directory, observer);
    }
    if (directory.files.empty()) {
        rejectEmpty(directory);
    }
    return directory;
}

std::vector<std::string> mxFilesOf(const std::string& path)
{
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
        return {path};
    }
    std::vector<std::string> files = entriesOf(path);
    std::for_each(files.begin(), files.end(), requireNoDevice);
    if (files.empty()) {
        throw Failure(Origin::Input, path, "The directory holds no file MX*.bin",
                      "name a file of another name itself");
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace mxmodule
