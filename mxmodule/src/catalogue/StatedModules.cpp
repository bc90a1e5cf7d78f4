#include "catalogue/StatedModules.h"

#include "catalogue/LoadedFile.h"

#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>

#include <algorithm>
#include <filesystem>

namespace mxmodule {

namespace {

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

} // namespace

std::optional<std::set<std::string>> statedModules(const MxDirectory& directory)
{
    if (!directory.leftOut.empty()) {
        return std::nullopt;
    }
    std::set<std::string> modules;
    for (const std::string& file : directory.files) {
        const auto module = statedModule(loadedFile(file));
        if (!module) {
            return std::nullopt;
        }
        modules.insert(*module);
    }
    return modules;
}

std::map<std::string, std::vector<std::string>> filesStating(const std::set<std::string>& modules,
                                                             const MxDirectory& directory)
{
    std::map<std::string, std::vector<std::string>> names;
    if (modules.empty()) {
        return names; // the files need not be read again
    }
    for (const std::string& file : directory.files) {
        const auto module = statedModule(loadedFile(file));
        if (module && modules.count(*module) != 0) {
            names[*module].push_back(std::filesystem::path(file).filename().string());
        }
    }
    for (auto& [module, files] : names) {
        std::sort(files.begin(), files.end());
    }
    return names;
}

} // namespace mxmodule
