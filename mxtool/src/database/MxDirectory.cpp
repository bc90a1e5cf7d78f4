#include "database/MxDirectory.h"

#include "CallFiles.h"
#include "Diagnostic.h"
#include "InputFile.h"

#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>

#include <algorithm>
#include <filesystem>

namespace mxtool {

namespace {

class Container : public devices::parser::mx::Parser
{};

// The groups in front of a framing failure are read all the same, and the identity is the second.
std::optional<std::string> statedModule(const std::vector<char>& mxData)
{
    Container container;
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

} // namespace

void requireMxFiles(const std::string& directory)
{
    std::error_code error;
    const std::filesystem::directory_iterator entries(directory, error);
    if (error) {
        throw Failure(ExitCode::Input,
                      {"error", directory, "Cannot read the directory: " + error.message(),
                       std::filesystem::is_regular_file(directory, error)
                           ? "name the directory that holds this file"
                           : ""});
    }
    if (mxFilesIn(directory).empty()) {
        throw Failure(ExitCode::Input, {"error", directory,
                                        "The directory holds no file MX*.bin, nothing is inserted",
                                        "files of other names, and those in directories below it, "
                                        "are not looked at"});
    }
}

std::vector<std::string> mxFilesIn(const std::string& directory)
{
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (isMxFileName(entry.path().filename().string())) {
            requireNoDevice(entry.path().string());
            callFiles().addInput(entry.path().string());
            files.push_back(entry.path().string());
        }
    }
    return files;
}

std::optional<std::set<std::string>> statedModules(const std::string& directory)
{
    std::set<std::string> modules;
    for (const std::string& file : mxFilesIn(directory)) {
        const auto module = statedModule(loadInput(file));
        if (!module) {
            return std::nullopt;
        }
        modules.insert(*module);
    }
    return modules;
}

std::vector<std::string> filesStating(const std::string& module, const std::string& directory)
{
    std::vector<std::string> names;
    for (const std::string& file : mxFilesIn(directory)) {
        if (statedModule(loadInput(file)) == module) {
            names.push_back(std::filesystem::path(file).filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace mxtool
