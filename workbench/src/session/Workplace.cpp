#include "session/Workplace.h"

#include <mxmodule/FileKind.h>
#include <mxmodule/Module.h>

#include <fmt/format.h>

#include <filesystem>

namespace workbench {

namespace {

namespace fs = std::filesystem;
using mxmodule::Failure;
using mxmodule::FileKind;
using mxmodule::Origin;

constexpr const char* unnamed = "station.yaml"; // a station that has no file yet

// The folder of `file` if none is stated; the current one without a file.
std::string folderOf(const std::string& file, const std::string& stated)
{
    const std::string own = fs::path(file).parent_path().string();
    const std::string folder = stated.empty() ? own : stated;
    return folder.empty() ? "." : folder;
}

bool isModuleKind(FileKind kind)
{
    return kind == FileKind::MxFile || kind == FileKind::TextForm;
}

} // namespace

Workplace::Workplace(const std::string& file, const std::string& folder,
                     const std::string& catalogueUrl)
    : url(catalogueUrl), folderPath(folderOf(file, folder)), modules(folderPath)
{
    if (file.empty()) {
        return;
    }
    const std::string name = modules.nameOf(file);
    const FileKind kind = mxmodule::kindOfFile(file);
    if (kind == FileKind::Station) {
        openedStation = std::make_unique<OpenedStation>(file);
    } else if (isModuleKind(kind)) {
        openedModule = name;
    } else {
        throw Failure(Origin::Input, file,
                      fmt::format("Found {}, expected a station, an mx file or its text form",
                                  mxmodule::nameOf(kind)),
                      mxmodule::callThatTakes(kind, file));
    }
}

mxmodule::ModuleFile Workplace::module(const std::string& reference) const
{
    return mxstation::moduleOf(reference.empty() ? openedModule : reference, stationName(),
                               stationOptions());
}

mxstation::Station Workplace::stationOf(const std::string& text) const
{
    return mxstation::stationOf(text, stationName(), stationOptions());
}

std::string Workplace::stationName() const
{
    return openedStation ? openedStation->path() : (fs::path(folderPath) / unnamed).string();
}

std::vector<ListedModule> Workplace::moduleFiles(std::chrono::milliseconds time) const
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + time;
    const fs::path beside = fs::path(stationName()).parent_path();
    std::vector<ListedModule> listed;
    for (const std::string& name : modules.names()) {
        const fs::path file = fs::path(folderPath) / name;
        const fs::path reference =
            file.lexically_normal().lexically_relative(beside.lexically_normal());
        listed.push_back({reference.string(), Clock::now() < end ? labelOf(name) : ""});
    }
    return listed;
}

std::string Workplace::labelOf(const std::string& name) const
{
    try {
        return mxmodule::Module(modules.file(name)).label();
    } catch (const Failure&) {
        return ""; // what is wrong with it is said when it is opened
    }
}

mxstation::StationOptions Workplace::stationOptions() const
{
    mxstation::StationOptions options;
    options.catalogueUrl = url;
    options.folder = &modules;
    return options;
}

} // namespace workbench
