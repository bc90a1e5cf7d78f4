#include "verbs/DevicesExport.h"

#include "OutputFile.h"
#include "ToolObserver.h"

#include <filesystem>

namespace mxtool {

namespace {

using mxmodule::CatalogueEntry;

std::string exportPath(const CatalogueEntry& module, const std::string& directory)
{
    return (std::filesystem::path(directory) / exportName(module)).string();
}

std::vector<std::string> exportPaths(const std::vector<CatalogueEntry>& modules,
                                     const std::string& directory)
{
    std::vector<std::string> paths;
    paths.reserve(modules.size());
    for (const CatalogueEntry& module : modules) {
        paths.push_back(exportPath(module, directory));
    }
    return paths;
}

} // namespace

std::size_t exportModules(mxmodule::Catalogue& catalogue,
                          const std::vector<CatalogueEntry>& modules, const std::string& directory)
{
    makeDirectory(directory);
    OutputFiles outputs(exportPaths(modules, directory), mxmodule::FileKind::MxFile);
    ToolObserver observer;
    const auto write = [&](const CatalogueEntry& module, const std::vector<char>& file) {
        outputs.write(exportPath(module, directory), {file.begin(), file.end()});
    };
    return catalogue.visitFiles(modules, write, &observer);
}

} // namespace mxtool
