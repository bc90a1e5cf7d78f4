#include "FileKind.h"

#include <mxauthor/MxFile.h>
#include <mxauthor/TextForm.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace mxtool {

namespace {

const std::string sqliteMagic("SQLite format 3\0", 16);

// A kind shows in its first bytes.
constexpr std::size_t judgedBytes = 0x100000;

// Raw bytes may look like any group, but hardly like one that says what the file is.
bool isMxFile(const std::string& content)
{
    std::string failure;
    const mxauthor::MxFile file =
        mxauthor::readDamagedMxFile({content.begin(), content.end()}, &failure);
    return std::any_of(file.groups.begin(), file.groups.end(), [](const mxauthor::Group& group) {
        return std::holds_alternative<mxauthor::Identity>(group.content);
    });
}

// The two keys that every station has.
bool isStation(const std::string& content)
{
    const auto keys = mxauthor::outermostKeys(content);
    return std::count(keys.begin(), keys.end(), "station") != 0 &&
           std::count(keys.begin(), keys.end(), "modules") != 0;
}

} // namespace

FileKind kindOf(const std::string& content)
{
    const std::string judged = content.substr(0, judgedBytes);
    if (judged.compare(0, sqliteMagic.size(), sqliteMagic) == 0) {
        return FileKind::Database;
    }
    if (isMxFile(judged)) {
        return FileKind::MxFile;
    }
    if (judged.find('\0') != std::string::npos) {
        return FileKind::Other;
    }
    if (isStation(judged)) {
        return FileKind::Station;
    }
    return mxauthor::isTextForm(judged) ? FileKind::TextForm : FileKind::Other;
}

FileKind kindOfFile(const std::string& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) {
        return FileKind::Other;
    }
    std::ifstream file(path, std::ios::binary);
    std::string content(judgedBytes, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    return kindOf(content);
}

const char* nameOf(FileKind kind)
{
    switch (kind) {
    case FileKind::MxFile:
        return "an mx file";
    case FileKind::TextForm:
        return "the text form of an mx file";
    case FileKind::Station:
        return "a station";
    case FileKind::Database:
        return "a database";
    default:
        return "something else";
    }
}

} // namespace mxtool
