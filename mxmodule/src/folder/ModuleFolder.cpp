#include "mxmodule/ModuleFolder.h"

#include "ModuleFileContent.h"
#include "TextBuild.h"
#include "folder/FileMemory.h"
#include "folder/FolderNames.h"

#include <fmt/format.h>
#include <text/Beginning.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include <time.h>

namespace mxmodule {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostBytesOfText = std::size_t{64} << 20U; // of all files that it names

[[noreturn]] void refuse(const std::string& name, const std::string& folder,
                         const std::string& problem)
{
    throw Failure(Origin::Input, text::abbreviated(name), "Cannot read the file: " + problem,
                  fmt::format("files come only from the folder \"{}\", links that lead out of it "
                              "are not followed; mxtool serve --folder names another one",
                              folder));
}

// Reads the files that a text form names, and notes them.
class NamedFileReader
{
public:
    NamedFileReader(std::string folder, std::vector<ReadRecord>& noted)
        : root(std::move(folder)), read(noted)
    {}

    mxauthor::NamedFile operator()(const fs::path& path)
    {
        const std::string begin = "cannot read " + text::abbreviated(path.string()) + ": ";
        if (total > mostBytesOfText) {
            return {"", begin + "the files before it have more than 64 MiB"};
        }
        ConfinedContent file = readConfined(root, path.string());
        if (!file.problem.empty()) {
            return {"", begin + file.problem};
        }
        total += file.content.size();
        read.push_back({*nameWithin(path.string()), file.stamp});
        return {std::move(file.content), {}};
    }

private:
    std::string root;
    std::vector<ReadRecord>& read;
    std::size_t total = 0;
};

timespec timeNow()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

bool isUnchanged(const BuiltModule& built, const std::string& root)
{
    return std::all_of(built.read.begin(), built.read.end(), [&](const ReadRecord& one) {
        const ConfinedFile file(root, one.name);
        return file.problem().empty() && file.stamp() == one.stamp;
    });
}

// Otherwise a later write may leave the stamps as they are.
bool areSettled(const std::vector<ReadRecord>& read, const timespec& before)
{
    return std::all_of(read.begin(), read.end(),
                       [&](const ReadRecord& one) { return isSettled(one.stamp, before); });
}

void tell(Observer* observer, const std::string& folder, const std::vector<ReadRecord>& read)
{
    for (const ReadRecord& one : read) {
        if (observer != nullptr) {
            observer->reads((fs::path(folder) / one.name).string());
        }
    }
}

std::size_t sizeOf(const std::vector<ReadRecord>& read)
{
    std::size_t bytes = 0;
    for (const ReadRecord& one : read) {
        bytes += static_cast<std::size_t>(one.stamp.size) + one.name.size() + sizeof one;
    }
    return bytes;
}

} // namespace

struct __attribute__((visibility("hidden"))) ModuleFolder::Content
{
    BuiltModule build(const std::string& name, std::vector<char> bytes,
                      std::vector<ReadRecord> read) const;

    std::string path; // as given
    std::string root; // without links
    FileMemory memory;
    FolderNames names;
};

// `read`: of `bytes` itself; those that a text form names are added.
BuiltModule ModuleFolder::Content::build(const std::string& name, std::vector<char> bytes,
                                         std::vector<ReadRecord> read) const
{
    const auto buildHere = [&](const std::string& file, const std::string& source) {
        return buildText(file, source, NamedFileReader(root, read));
    };
    const ModuleFile made(ModuleFile::Content::of(name, std::move(bytes), buildHere));
    const std::size_t size = sizeOf(read) + 2 * made.bytes().size();
    return {made, std::move(read), size};
}

ModuleFolder::ModuleFolder(const std::string& path) : content(std::make_shared<Content>())
{
    std::error_code failed;
    content->path = path;
    content->root = fs::canonical(path.empty() ? "." : path, failed).string();
    if (failed || !fs::is_directory(content->root, failed)) {
        throw Failure(Origin::Input, path,
                      "There is no such directory" + (failed ? ": " + failed.message() : ""));
    }
}

const std::string& ModuleFolder::path() const
{
    return content->path;
}

ModuleFile ModuleFolder::file(const std::string& name, Observer* observer) const
{
    const std::string within = nameWithin(name).value_or(name);
    const auto known = content->memory.find(within);
    if (known && isUnchanged(*known, content->root)) {
        tell(observer, content->path, known->read);
        return known->file;
    }
    const timespec before = timeNow();
    const ConfinedContent own = readConfined(content->root, within);
    if (!own.problem.empty()) {
        refuse(name, content->path, own.problem);
    }
    const BuiltModule built =
        content->build(within, {own.content.begin(), own.content.end()}, {{within, own.stamp}});
    tell(observer, content->path, built.read);
    if (areSettled(built.read, before)) {
        content->memory.add(within, built);
    }
    return built.file;
}

ModuleFile ModuleFolder::fileOf(const std::string& name, std::vector<char> bytes,
                                Observer* observer) const
{
    const BuiltModule built = content->build(name, std::move(bytes), {});
    tell(observer, content->path, built.read);
    return built.file;
}

bool ModuleFolder::contains(const std::string& name) const
{
    const auto within = nameWithin(name);
    return within && ConfinedFile(content->root, *within).problem().empty();
}

std::string ModuleFolder::nameOf(const std::string& path) const
{
    std::error_code failed;
    const bool isPath = path.find('\0') == std::string::npos;
    const fs::path whole = isPath ? fs::canonical(path, failed) : fs::path();
    const fs::path name = whole.lexically_relative(content->root);
    if (!isPath || failed || name.empty() || *name.begin() == "..") {
        throw Failure(
            Origin::Input, text::abbreviated(path),
            fmt::format("Found nothing of this name in the folder \"{}\"", content->path),
            "files come only from this folder: move it there, or name the folder that has it, with "
            "mxtool serve --folder");
    }
    return name.string();
}

std::vector<std::string> ModuleFolder::names() const
{
    return content->names.below(content->root);
}

} // namespace mxmodule
