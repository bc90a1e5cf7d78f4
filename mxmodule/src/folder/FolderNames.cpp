#include "folder/FolderNames.h"

#include <mxmodule/FileKind.h>

#include <text/FileExtension.h>
#include <text/Utf8.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

namespace mxmodule {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t judgedBytesOfFile = 0x100000; // enough to tell the kind of a file

bool isCandidate(const std::string& name)
{
    return (text::endsInExtension(name, ".bin") || text::endsInExtension(name, ".yaml") ||
            text::endsInExtension(name, ".yml")) &&
           text::nextNonUtf8(name, 0) == name.size();
}

// Names of files that may be modules, by their names alone.
std::vector<std::string> candidatesBelow(const std::string& root)
{
    std::vector<std::string> names;
    std::error_code failed;
    const auto skip = fs::directory_options::skip_permission_denied;
    fs::recursive_directory_iterator entry(root, skip, failed);
    for (std::size_t seen = 0;
         !failed && entry != fs::recursive_directory_iterator() &&
         seen < FolderNames::mostEntries && names.size() < FolderNames::mostNames;
         entry.increment(failed), ++seen) {
        const std::string last = entry->path().filename().string();
        const bool isHidden = last.front() == '.';
        if (isHidden || entry.depth() + 1 >= static_cast<int>(FolderNames::mostDirectories)) {
            entry.disable_recursion_pending();
        }
        const std::string name = entry->path().lexically_relative(root).string();
        if (!isHidden && isCandidate(name)) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool isModuleFile(const ConfinedFile& file)
{
    const auto begin =
        file.read(std::min(judgedBytesOfFile, static_cast<std::size_t>(file.stamp().size)));
    const FileKind kind = begin ? kindOf(*begin) : FileKind::Other;
    return kind == FileKind::MxFile || kind == FileKind::TextForm;
}

} // namespace

std::vector<std::string> FolderNames::below(const std::string& root)
{
    const JudgedFiles before = judgedBefore();
    JudgedFiles now;
    std::vector<std::string> names;
    for (const std::string& name : candidatesBelow(root)) {
        const ConfinedFile file(root, name);
        if (!file.problem().empty()) {
            continue;
        }
        const auto same = before.find(name);
        const bool isKnown = same != before.end() && same->second.stamp == file.stamp();
        const bool isModule = isKnown ? same->second.isModule : isModuleFile(file);
        now.emplace(name, Judged{file.stamp(), isModule});
        if (isModule) {
            names.push_back(name);
        }
    }
    remember(std::move(now));
    return names;
}

FolderNames::JudgedFiles FolderNames::judgedBefore()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return known;
}

void FolderNames::remember(JudgedFiles files)
{
    const std::lock_guard<std::mutex> lock(mutex);
    known = std::move(files);
}

} // namespace mxmodule
