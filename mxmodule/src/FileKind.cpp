#include "mxmodule/FileKind.h"

#include "SourcePlace.h"
#include "ValuesComment.h"

#include <mxauthor/MxFile.h>
#include <mxauthor/TextForm.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace mxmodule {

namespace {

const std::string sqliteMagic("SQLite format 3\0", 16);

// The first bytes suffice to recognise a kind.
constexpr std::size_t judgedBytes = 0x100000;

// Raw bytes may look like any group, but hardly like one that identifies an mx file.
bool isMxFile(const std::string& content)
{
    const mxauthor::MxFile file =
        mxauthor::readDamagedMxFile({content.begin(), content.end()}).file;
    return std::any_of(file.groups.begin(), file.groups.end(), [](const mxauthor::Group& group) {
        return std::holds_alternative<mxauthor::Identity>(group.content);
    });
}

bool hasKey(const std::vector<std::string>& keys, const std::string& key)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// The other keys of a station are optional. "modules" alone may also be a mistake in a text form.
bool isStation(const std::vector<std::string>& keys, const std::string& content)
{
    return hasKey(keys, "modules") &&
           (hasKey(keys, "station") || hasKey(keys, "layout") || !mxauthor::isTextForm(content));
}

// The schema name in JSON written by mxtool; empty for other texts.
std::string schemaName(const std::string& content, const std::vector<std::string>& keys)
{
    const std::string begin = "\"mxtool.";
    const std::size_t schema = hasKey(keys, "schema") ? content.find("\"schema\"") : content.npos;
    const std::size_t name = content.find(begin, std::min(schema, content.size()));
    const std::size_t from = name == content.npos ? content.size() : name + 1;
    return content.substr(from, content.find('"', from) - from);
}

// The first line of the CSV that `config` writes, with any separator.
bool isConfigurationTable(const std::string& content)
{
    const std::string line = content.substr(0, content.find_first_of("\r\n"));
    const std::string last = "device_type_id";
    return line.find("channel") != line.npos && line.find("value") != line.npos &&
           line.size() > last.size() &&
           line.compare(line.size() - last.size(), last.size(), last) == 0;
}

FileKind kindOfText(const std::string& content)
{
    const std::vector<std::string> keys = mxauthor::outermostKeys(content);
    const std::string schema = schemaName(content, keys);
    if (!schema.empty()) {
        return schema == "mxtool.config" ? FileKind::Configuration : FileKind::Result;
    }
    if (hasValuesMark(content)) {
        return FileKind::Values;
    }
    if (isConfigurationTable(content)) {
        return FileKind::Configuration;
    }
    if (isStation(keys, content)) {
        return FileKind::Station;
    }
    return mxauthor::isTextForm(content) ? FileKind::TextForm : FileKind::Other;
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
    return judged.find('\0') != std::string::npos ? FileKind::Other : kindOfText(judged);
}

std::string judgedContent(const std::string& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) {
        return "";
    }
    std::ifstream file(path, std::ios::binary);
    std::string content(judgedBytes, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

FileKind kindOfFile(const std::string& path)
{
    return kindOf(judgedContent(path));
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
        return "a database (SQLite)";
    case FileKind::Values:
        return "a file of parameter values";
    case FileKind::Configuration:
        return "a configuration that mxtool config wrote";
    case FileKind::Result:
        return "a result that mxtool wrote as JSON";
    default:
        return "something else";
    }
}

bool costsWork(FileKind kind)
{
    return kind != FileKind::Other && kind != FileKind::Configuration && kind != FileKind::Result;
}

std::string callThatTakes(FileKind kind, const std::string& path)
{
    switch (isPath(path) ? kind : FileKind::Other) {
    case FileKind::MxFile:
        return "mxtool show " + path + " shows the device that it describes";
    case FileKind::TextForm:
        return "mxtool show " + path + " shows the device that it describes, mxtool build " + path +
               " -o FILE.bin writes the mx file";
    case FileKind::Station:
        return "mxtool station show " + path + " shows its modules and their addresses";
    case FileKind::Database:
        return "mxtool devices --db sqlite:" + path + " lists the modules that it holds";
    case FileKind::Values:
        return "mxtool config FILE --values " + path + " takes it, FILE being the mx file";
    case FileKind::Configuration:
        return "mxtool config FILE --values " + path + " or --decode " + path +
               " takes it, FILE being the mx file";
    default:
        return "";
    }
}

} // namespace mxmodule
