#include "ModuleFile.h"

#include "Diagnostic.h"
#include "FileKind.h"
#include "InputFile.h"
#include "SourceReport.h"

#include <mxauthor/SourceMap.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

[[noreturn]] void refuse(const std::string& path, const std::string& text, const std::string& hint)
{
    throw Failure(ExitCode::Input, {"error", inputName(path), text, hint});
}

bool isControl(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && c != '\t' && c != '\n' && c != '\r';
}

bool isDatabase(const std::vector<char>& content)
{
    constexpr std::size_t judged = 16; // one shows in its first bytes
    const auto length = static_cast<std::ptrdiff_t>(std::min(judged, content.size()));
    return kindOf({content.begin(), content.begin() + length}) == FileKind::Database;
}

// Text in UTF-16 is refused, but as a text.
bool isUtf16(const std::vector<char>& content)
{
    const std::string begin(content.begin(), content.begin() + (content.size() < 2 ? 0 : 2));
    return begin == "\xFF\xFE" || begin == "\xFE\xFF";
}

// Every mx file has bytes that no text has: those of its identifiers and lengths.
bool isText(const std::vector<char>& content)
{
    return isUtf16(content) || std::none_of(content.begin(), content.end(), isControl);
}

} // namespace

ModuleFile::ModuleFile(const std::string& file) : path(file), content(loadBytes(file))
{
    if (content.empty()) {
        refuse(path, "The file is empty, expected an mx file or its text form", "");
    }
    if (isDatabase(content)) {
        refuse(path, "This is a database (SQLite), expected an mx file or its text form",
               "mxtool devices --db sqlite:" + path + " lists the modules that it holds");
    }
    if (mxtool::isText(content)) {
        build();
    }
}

ModuleFile::ModuleFile(std::string file, std::vector<char> bytes)
    : path(std::move(file)), content(std::move(bytes))
{}

void ModuleFile::build()
{
    source.assign(content.begin(), content.end());
    if (kindOf(source) == FileKind::Station) {
        refuse(path, "This is a station, expected an mx file or its text form", "");
    }
    auto result = std::make_unique<mxauthor::BuildResult>(buildInput(source, path));
    const std::size_t errors = result->errors.size();
    if (errors != 0) {
        for (const mxauthor::SourceError& error : result->errors) {
            reportAt(name(), source, error, "error", "");
        }
        refuse(path,
               fmt::format("A text with {} error{}, expected an mx file or its text form", errors,
                           errors == 1 ? "" : "s"),
               "");
    }
    const mxauthor::Bytes bytes = mxauthor::writeMxFile(result->file);
    content.assign(bytes.begin(), bytes.end());
    built = std::move(result);
}

std::string ModuleFile::name() const
{
    return inputName(path);
}

std::vector<char> ModuleFile::loadedBytes() const
{
    std::vector<char> loaded = content;
    loaded.push_back('\xFF');
    return loaded;
}

std::string ModuleFile::placeOf(std::size_t offset) const
{
    if (!isText()) {
        return placeInFile(name(), offset);
    }
    const mxauthor::SourceMap map(source, *built);
    return placeInText(name(), map.at(static_cast<std::uint32_t>(offset), ""));
}

std::vector<mxauthor::TextFinding> ModuleFile::checkText() const
{
    return mxauthor::checkText(source, *built);
}

std::string ModuleFile::excerptAt(const mxauthor::SourceError& where) const
{
    return shownExcerpt(source, where);
}

} // namespace mxtool
