#include "mxmodule/ModuleFile.h"

#include "ExpectedKind.h"
#include "ModuleFileContent.h"
#include "SourcePlace.h"
#include "TextBuild.h"
#include "check/FileCheck.h"

#include <mxmodule/ReadFile.h>

#include <devices/parser/mx/Parser.h>
#include <mxauthor/SourceMap.h>

#include <fmt/format.h>
#include <text/ControlCharacters.h>
#include <text/Counted.h>
#include <text/Utf8.h>

#include <utility>

namespace mxmodule {

namespace {

constexpr const char* expectedModule = "an mx file or its text form";

// Identifiers and lengths of an mx file contain bytes that no text has. UTF-16 is rejected, but as
// a text.
bool looksLikeText(std::string_view content)
{
    return text::isUtf16(content) || !text::hasControls(content);
}

[[noreturn]] void rejectText(const std::string& name, const std::string& source,
                             const std::vector<mxauthor::SourceError>& errors)
{
    std::vector<Finding> findings = errorsInText(name, source, errors, expectedModule);
    findings.push_back({Severity::Error, name,
                        fmt::format("A text with {}, expected {}",
                                    text::counted(errors.size(), "error"), expectedModule)});
    throw Failure(std::move(findings));
}

// Whether `bytes` are an mx file with an identity, without looking further.
bool isIntact(const std::vector<char>& bytes)
{
    devices::parser::mx::Parser container;
    try {
        container.parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        std::uint32_t id = 0;
        std::uint8_t type = 0;
        container.getModuleIdAndType(&id, &type);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::shared_ptr<const std::vector<char>> loadedForm(const std::vector<char>& bytes)
{
    auto loaded = std::make_shared<std::vector<char>>();
    loaded->reserve(bytes.size() + 1);
    *loaded = bytes;
    loaded->push_back('\xFF');
    return loaded;
}

} // namespace

ModuleFile ModuleFile::read(const std::string& path, Observer* observer)
{
    return ModuleFile(path, readFile(path), observer);
}

std::shared_ptr<const ModuleFile::Content>
ModuleFile::Content::of(std::string name, std::vector<char> bytes, const Build& build)
{
    if (bytes.empty()) {
        throw Failure(Origin::Input, name,
                      fmt::format("The file is empty, expected {}", expectedModule));
    }
    if (!isIntact(bytes)) {
        requireModule(name, {bytes.begin(), bytes.end()}, expectedModule);
    }
    auto made = std::make_shared<Content>();
    if (looksLikeText({bytes.data(), bytes.size()})) {
        made->source.assign(bytes.begin(), bytes.end());
        made->built = build(name, made->source);
        if (!made->built->errors.empty()) {
            rejectText(name, made->source, made->built->errors);
        }
        bytes = bytesOf(*made->built);
    }
    made->name = std::move(name);
    made->loaded = loadedForm(bytes);
    made->bytes = std::move(bytes);
    return made;
}

ModuleFile::ModuleFile(std::string name, std::vector<char> bytes, Observer* observer)
    : content(Content::of(std::move(name), std::move(bytes),
                          [observer](const std::string& file, const std::string& source) {
                              return buildText(file, source, observer);
                          }))
{}

ModuleFile::ModuleFile(std::shared_ptr<const Content> made) : content(std::move(made)) {}

const std::string& ModuleFile::name() const
{
    return content->name;
}

const std::vector<char>& ModuleFile::bytes() const
{
    return content->bytes;
}

bool ModuleFile::isText() const
{
    return content->built.has_value();
}

std::string ModuleFile::placeOf(std::size_t offset) const
{
    if (!isText()) {
        return placeInFile(name(), offset);
    }
    const mxauthor::SourceMap map(content->source, *content->built);
    return placeInText(name(), map.at(static_cast<std::uint32_t>(offset), ""));
}

CheckedFile ModuleFile::check(const RuleSettings& settings) const
{
    return {name(), isText() ? findingsInText(name(), content->source, *content->built, settings)
                             : findingsInFile(name(), bytes(), settings)};
}

} // namespace mxmodule
