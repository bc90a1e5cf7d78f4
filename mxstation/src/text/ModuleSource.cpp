#include "text/ModuleSource.h"

#include <Poco/String.h>

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/FileExtension.h>
#include <text/NearestWords.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace mxstation {

namespace {

using mxmodule::Finding;
using mxmodule::Severity;

constexpr std::size_t identifierDigits = 8;
constexpr std::size_t namesCompared = 10000; // files of a directory

bool isIdentifier(const std::string& reference)
{
    return reference.size() == identifierDigits &&
           reference.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

bool isModuleName(const std::string& name)
{
    return text::endsInExtension(name, ".bin") || text::endsInExtension(name, ".yaml") ||
           text::endsInExtension(name, ".yml");
}

// Whether something is at `path`, a symbolic link to nothing too: what is wrong with it is known
// when it is read.
bool isSomething(const std::filesystem::path& path)
{
    std::error_code ignored;
    const bool isName = path.native().find('\0') == std::string::npos;
    return isName && std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

// Why there is no module: of the errors of its file the first. The last of several findings only
// says how many there are.
Finding reasonOf(const mxmodule::Failure& failure, const std::string& file)
{
    const auto isError = [](const Finding& one) { return one.severity == Severity::Error; };
    const auto& all = failure.findings();
    const auto first = std::find_if(all.begin(), all.end(), isError);
    const auto count = std::count_if(all.begin(), std::prev(all.end()), isError);
    Finding finding = first == all.end() ? failure.reason() : *first;
    if (count > 1) {
        finding.hint =
            fmt::format("mxtool check {} lists all {} errors", text::abbreviated(file), count);
    }
    return finding;
}

// In a station the place of a finding is that of the reference.
std::string withPlace(const Finding& finding)
{
    return finding.place.empty() ? finding.text : finding.place + ": " + finding.text;
}

// The mx files and text forms in the directory of `path`, by the names that a station may use.
std::vector<std::string> filesBeside(const std::filesystem::path& path,
                                     const std::filesystem::path& reference)
{
    std::vector<std::string> names;
    std::error_code failed;
    const auto directory = path.parent_path().empty() ? "." : path.parent_path();
    auto file = std::filesystem::directory_iterator(directory, failed);
    for (; !failed && file != std::filesystem::directory_iterator() && names.size() < namesCompared;
         file.increment(failed)) {
        const auto name = file->path().filename();
        if (isModuleName(name.string())) {
            names.push_back((reference.parent_path() / name).string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The files of the folder, by the names that a station in its directory `from` may use.
std::vector<std::string> namesFrom(const std::filesystem::path& from,
                                   const mxmodule::ModuleFolder& folder)
{
    std::vector<std::string> names = folder.names();
    const std::filesystem::path start = from.empty() ? "." : from;
    for (std::string& name : names) {
        name = std::filesystem::path(name).lexically_relative(start).string();
    }
    return names;
}

// Reading a pipe or device may never end.
void requireEnd(const std::filesystem::path& path)
{
    namespace fs = std::filesystem;
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status)) {
        throw mxmodule::Failure(mxmodule::Origin::Input, path.string(),
                                "Found a pipe or a device, expected a file");
    }
}

} // namespace

ModuleSource::ModuleSource(const std::string& station, const StationOptions& howRead,
                           mxmodule::Catalogue* openCatalogue)
    : isFile(!station.empty() && station.front() != '<'),
      directory(isFile ? std::filesystem::path(station).parent_path().string() : std::string()),
      options(howRead),
      catalogue(openCatalogue)
{}

ModuleSource::ModuleSource(const Station& station)
    : ModuleSource(station.file, StationOptions(), nullptr)
{
    gives = Gives::Known;
    for (const Entry& entry : station.entries) {
        if (entry.module) {
            known.emplace(entry.reference, Found{entry.module, {}});
        }
    }
}

ModuleSource ModuleSource::withoutFiles()
{
    ModuleSource modules("", StationOptions(), nullptr);
    modules.gives = Gives::None;
    return modules;
}

std::optional<mxmodule::ModuleFile>
ModuleSource::find(const std::string& reference, const SourcePlace& place, StationErrors& errors)
{
    if (gives == Gives::None) {
        return std::nullopt;
    }
    auto found = known.find(reference);
    if (found == known.end() && errors.isFull()) {
        return std::nullopt; // finding the nearest name takes time
    }
    if (found == known.end()) {
        found = known.emplace(reference, read(reference)).first;
    }
    if (!found->second.file) {
        const Finding& finding = found->second.finding;
        errors.add(place, withPlace(finding), finding.hint, finding.accepted);
    }
    return found->second.file;
}

mxmodule::ModuleFile ModuleSource::require(const std::string& reference)
{
    Found found = read(reference);
    if (!found.file) {
        throw mxmodule::Failure(found.finding);
    }
    return *found.file;
}

ModuleSource::Found ModuleSource::read(const std::string& reference)
{
    if (gives == Gives::Known) {
        return {std::nullopt, {Severity::Error, "", "this module is not in the row yet"}};
    }
    try {
        return isIdentifier(reference) ? readRecord(Poco::toLower(reference)) : readFile(reference);
    } catch (const mxmodule::Failure& failure) {
        return {std::nullopt, reasonOf(failure, pathOf(reference).string())};
    }
}

std::filesystem::path ModuleSource::pathOf(const std::string& reference) const
{
    return std::filesystem::path(directory) / reference;
}

ModuleSource::Found ModuleSource::readFile(const std::string& reference) const
{
    if (options.folder != nullptr) {
        return readFromFolder(reference);
    }
    const std::filesystem::path path = pathOf(reference);
    if (isSomething(path)) {
        requireEnd(path);
        if (options.observer != nullptr) {
            options.observer->reads(path.string());
        }
        return {mxmodule::ModuleFile::read(path.string(), options.observer), {}};
    }
    const auto names = filesBeside(path, reference);
    Finding finding{Severity::Error, "",
                    fmt::format("There is no mx file \"{}\"{}", text::abbreviated(path.string()),
                                text::didYouMean(reference, names)),
                    "the name is that of a file, counted from the directory of the station, or the "
                    "eight hexadecimal digits of a module of the catalogue"};
    finding.accepted = text::nearestWords(reference, names);
    return {std::nullopt, finding};
}

// A path that is absolute is refused by the folder.
ModuleSource::Found ModuleSource::readFromFolder(const std::string& reference) const
{
    const std::filesystem::path from = directoryInFolder();
    const std::string name = (from / reference).string();
    try {
        return {options.folder->file(name, options.observer), {}};
    } catch (const mxmodule::Failure& failure) {
        Finding finding = reasonOf(failure, name);
        if (!options.folder->contains(name)) {
            const auto names = namesFrom(from, *options.folder);
            finding.text += text::didYouMean(reference, names);
            finding.accepted = text::nearestWords(reference, names);
        }
        return {std::nullopt, finding};
    }
}

std::string ModuleSource::directoryInFolder() const
{
    const std::string name =
        isFile ? options.folder->nameOf(directory.empty() ? "." : directory) : std::string();
    return name == "." ? std::string() : name; // for names without "./"
}

ModuleSource::Found ModuleSource::readRecord(const std::string& moduleId)
{
    mxmodule::Catalogue& modules = openedCatalogue();
    const auto record = modules.find(moduleId);
    if (!record) {
        Finding unknown = modules.unknownModule(moduleId);
        unknown.place.clear();
        return {std::nullopt, unknown};
    }
    if (record->file.empty()) {
        return {std::nullopt, mxmodule::withoutFile({record->module}).front()};
    }
    const std::string name = fmt::format("<module {} of {}>", moduleId, modules.name());
    if (options.folder != nullptr) {
        return {options.folder->fileOf(name, record->file, options.observer), {}};
    }
    return {mxmodule::ModuleFile(name, record->file, options.observer), {}};
}

mxmodule::Catalogue& ModuleSource::openedCatalogue()
{
    if (catalogue != nullptr) {
        return *catalogue;
    }
    if (!opened) {
        opened.emplace(mxmodule::Catalogue::open(options.catalogueUrl));
    }
    return *opened;
}

mxmodule::ModuleFile moduleOf(const std::string& reference, const std::string& name,
                              const StationOptions& options)
{
    return ModuleSource(name, options, nullptr).require(reference);
}

} // namespace mxstation
