#include "ModuleFile.h"

#include "Counted.h"
#include "Diagnostic.h"
#include "FileKind.h"
#include "InputFile.h"

#include <mxauthor/SourceMap.h>

#include <fmt/format.h>
#include <text/ControlCharacters.h>
#include <text/Utf8.h>

namespace mxtool {

namespace {

constexpr const char* expectedModule = "an mx file or its text form";

[[noreturn]] void reject(const std::string& path, const std::string& text, const std::string& hint)
{
    throw Failure(ExitCode::Input, inputName(path), text, hint);
}

// Identifiers and lengths of an mx file contain bytes that no text has. UTF-16 is rejected, but as
// a text.
bool isText(std::string_view content)
{
    return text::isUtf16(content) || text::countOfControls(content) == 0;
}

} // namespace

ModuleFile::ModuleFile(const std::string& file) : path(file), content(loadBytes(file))
{
    if (content.empty()) {
        reject(path, fmt::format("The file is empty, expected {}", expectedModule), "");
    }
    requireModule(path, {content.begin(), content.end()}, expectedModule);
    if (mxtool::isText({content.data(), content.size()})) {
        build();
    }
}

ModuleFile::ModuleFile(std::string file, std::vector<char> bytes)
    : path(std::move(file)), content(std::move(bytes))
{}

void ModuleFile::build()
{
    source.assign(content.begin(), content.end());
    auto result = std::make_unique<mxauthor::BuildResult>(buildInput(source, path));
    const std::size_t errors = result->errors.size();
    if (errors > 1) {
        requireKeyOfTextForm(path, source, expectedModule);
    }
    if (errors != 0) {
        for (const mxauthor::SourceError& error : result->errors) {
            reportAt(name(), source, error, "error", "");
        }
        reject(path,
               fmt::format("A text with {}, expected {}", counted(errors, "error"), expectedModule),
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
