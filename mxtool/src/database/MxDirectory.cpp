#include "database/MxDirectory.h"

#include "Diagnostic.h"
#include "FilesInUse.h"
#include "InputFile.h"

#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>

#include <algorithm>
#include <filesystem>

namespace mxtool {

namespace {

namespace fs = std::filesystem;

// The groups before a framing failure are still read; the identity is the second.
std::optional<std::string> statedModule(const std::vector<char>& mxData)
{
    devices::parser::mx::Parser container;
    try {
        container.parse(mxData.data(), static_cast<std::uint32_t>(mxData.size()));
    } catch (const std::runtime_error&) {
    }
    try {
        std::uint32_t id = 0;
        std::uint8_t type = 0;
        container.getModuleIdAndType(&id, &type);
        return devices::parser::mx::u32AsHex(id);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

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

void addEntry(const std::string& path, MxDirectory& directory)
{
    if (const auto found = foundInsteadOfFile(path)) {
        report({"error", path, "Found " + *found + ", expected a file: it is left out"});
        ++directory.leftOut;
    } else {
        filesInUse().addInput(path);
        directory.files.push_back(path);
    }
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
        throw Failure(ExitCode::Input, path, "Cannot read the directory: " + error.message(),
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
        throw Failure(ExitCode::Input, path, "Found a pipe or a device, expected a file");
    }
}

} // namespace

MxDirectory listMxDirectory(const std::string& path)
{
    MxDirectory directory{path, {}, 0};
    for (const std::string& entry : entriesOf(path)) {
        addEntry(entry, directory);
    }
    if (directory.files.empty()) {
        throw Failure(ExitCode::Input, path,
                      "The directory holds no file MX*.bin, nothing is inserted",
                      "files of other names, and those in directories below it, are not looked "
                      "at");
    }
    return directory;
}

std::optional<std::set<std::string>> statedModules(const MxDirectory& directory)
{
    if (directory.leftOut != 0) {
        return std::nullopt;
    }
    std::set<std::string> modules;
    for (const std::string& file : directory.files) {
        const auto module = statedModule(loadInput(file));
        if (!module) {
            return std::nullopt;
        }
        modules.insert(*module);
    }
    return modules;
}

std::vector<std::string> filesStating(const std::string& module, const MxDirectory& directory)
{
    std::vector<std::string> names;
    for (const std::string& file : directory.files) {
        if (statedModule(loadInput(file)) == module) {
            names.push_back(fs::path(file).filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
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
        throw Failure(ExitCode::Input, path, "The directory holds no file MX*.bin",
                      "name a file of another name itself");
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace mxtool
