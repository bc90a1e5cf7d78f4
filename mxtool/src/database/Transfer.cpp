#include "database/Transfer.h"

#include "Diagnostic.h"
#include "OutputFile.h"
#include "Progress.h"

#include <text/ShownText.h>

#include <fmt/format.h>

#include <filesystem>

namespace mxtool {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleSummary;

std::string fileNamePart(const std::string& bytes)
{
    std::string part;
    for (const char c : bytes) {
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                           (c >= 'a' && c <= 'z') || c == '-' || c == '_';
        part += plain ? std::string(1, c) : fmt::format("%{:02x}", static_cast<unsigned char>(c));
    }
    return part;
}

std::string exportPath(const ModuleSummary& module, const std::string& directory)
{
    return (std::filesystem::path(directory) / exportName(module)).string();
}

std::vector<std::string> exportPaths(const std::vector<ModuleSummary>& modules,
                                     const std::string& directory)
{
    std::vector<std::string> paths;
    paths.reserve(modules.size());
    for (const ModuleSummary& module : modules) {
        paths.push_back(exportPath(module, directory));
    }
    return paths;
}

} // namespace

std::string exportName(const ModuleSummary& module)
{
    return "MX" + fileNamePart(module.moduleIdText) +
           (module.family == "kv38" ? "" : "." + fileNamePart(module.family)) + ".bin";
}

std::size_t exportModules(const std::vector<ModuleSummary>& modules, DeviceDatabase& database,
                          const std::string& directory)
{
    makeDirectory(directory);
    OutputFiles outputs(exportPaths(modules, directory), FileKind::MxFile);
    Progress progress("files", modules.size());
    std::size_t written = 0;
    database.visit(modules, [&](const DeviceProperties& record) {
        const std::vector<char>& stored = *record.mxFileData;
        if (stored.empty()) {
            return;
        }
        // A stored file has one byte more than the file on disk (0xFF).
        const ModuleSummary names{record.family, record.moduleIdText, ""};
        outputs.write(exportPath(names, directory), std::string(stored.begin(), stored.end() - 1));
        progress.show(++written);
    });
    return written;
}

std::size_t copyModules(const std::vector<ModuleSummary>& modules, DeviceDatabase& source,
                        DeviceDatabase& target)
{
    Progress progress("modules", modules.size());
    std::size_t copied = 0;
    auto transaction = target.beginTransaction();
    source.visit(modules, [&](const DeviceProperties& record) {
        if (const auto content = source.content(record.family, record.moduleIdText)) {
            target.insert(record, *content);
        } else {
            target.insert(record);
        }
        progress.show(++copied);
    });
    transaction.commit();
    return copied;
}

std::size_t reportWithoutFile(const std::vector<ModuleSummary>& modules)
{
    constexpr std::size_t most = 20;
    std::vector<std::string> ids;
    for (const ModuleSummary& module : modules) {
        if (module.mxFileSize == 0) {
            ids.push_back(text::forTerminal(module.moduleIdText));
        }
    }
    if (ids.empty()) {
        return 0;
    }
    const std::size_t count = ids.size();
    report({"warning", "",
            fmt::format("{} stored without the mx file: {}",
                        count == 1 ? "1 module was" : fmt::format("{} modules were", count),
                        beginningOfList(ids, most, ", ", " ")),
            "mxtool populate DIRECTORY stores the files; a host stores their bytes in "
            "mxFileData of the record"});
    return count;
}

} // namespace mxtool
