#include "configuration/ReadImage.h"

#include "FindingAdvice.h"
#include "HexBytes.h"
#include "InvalidInput.h"
#include "configuration/DecodedImage.h"
#include "configuration/RegisterWords.h"
#include "configuration/ValuesFile.h"
#include "configuration/WrittenTable.h"

#include <mxauthor/ForeignContent.h>
#include <mxmodule/FileKind.h>

#include <fmt/format.h>
#include <text/FileExtension.h>

namespace mxmodule {

namespace {

enum class Content
{
    Bytes,
    Words,
    Json,
    Csv
};

bool isOwnTable(const std::string& text)
{
    const std::size_t begin = text.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0;
    return text.compare(begin, 2, "id") == 0 && text.size() > begin + 2 &&
           std::string(",;\t").find(text[begin + 2]) != std::string::npos;
}

// A file without a known extension contains bytes, unless their number is wrong and it begins like
// the output of `config`.
Content contentOf(const std::string& name, const std::string& text, std::size_t size)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const bool isWord = first != std::string::npos &&
                        std::string("-0123456789").find(text[first]) != std::string::npos;
    if (text::endsInExtension(name, ".json")) {
        return Content::Json;
    }
    if (text::endsInExtension(name, ".csv")) {
        return isWord ? Content::Words : Content::Csv;
    }
    if (text::endsInExtension(name, ".txt") || text::endsInExtension(name, ".hex")) {
        return Content::Words;
    }
    if (text.size() == size || first == std::string::npos) {
        return Content::Bytes;
    }
    return text[first] == '{' ? Content::Json : (isOwnTable(text) ? Content::Csv : Content::Bytes);
}

bool isTableOfValues(const CsvTable& table)
{
    return table.column("name") && table.column("value") && !table.column("byte") &&
           !table.column("register") && !table.column("address");
}

// What to do with a file that is not an image.
void advise(const std::string& name, const std::string& text, Finding& finding)
{
    const FileKind kind = kindOf(text);
    const bool isYaml = text::endsInExtension(name, ".yaml") || text::endsInExtension(name, ".yml");
    if (kind == FileKind::Values || (kind == FileKind::Other && isYaml)) {
        giveAdvice(finding, Advice::ReadAsValues);
        return;
    }
    const auto found = kind == FileKind::Other ? mxauthor::foreignContent(text) : nameOf(kind);
    const std::string taker = callThatTakes(kind, name);
    if (found) {
        finding.hint = fmt::format("the file is {}, not bytes that were read from a module{}{}",
                                   *found, taker.empty() ? "" : "; ", taker);
    }
}

[[noreturn]] void failAsValues(const std::string& name, const std::string& text)
{
    Finding finding{Severity::Error, name, text};
    giveAdvice(finding, Advice::ReadAsValues);
    throw Failure(std::move(finding));
}

class ImageSource
{
public:
    ImageSource(Fieldbus bus, const TranslatedModule& translated, std::string givenPlace)
        : fieldbus(bus), module(translated), place(std::move(givenPlace))
    {}

    ReadImage ofFile(const std::vector<char>& bytes, const std::string& name)
    {
        const std::string text(bytes.begin(), bytes.end());
        switch (contentOf(name, text, decodedSize(fieldbus, module))) {
        case Content::Json:
            return ofJson(text, name);
        case Content::Csv:
            return ofTable(readCsv(text, name), name);
        case Content::Words:
            return bare(bytesOfWords(text));
        default:
            return ofBytes(bytes, name);
        }
    }

    ReadImage ofWords(const std::string& words) { return bare(bytesOfWords(words)); }

private:
    // Throws an `InvalidInput`.
    std::vector<char> bytesOfWords(const std::string& words)
    {
        return fieldbus == Fieldbus::Modbus ? bytesOfRegisters(words, decodedSize(fieldbus, module))
                                            : bytesOfHex(words);
    }

    Finding missingIdentity() const
    {
        return {Severity::Note, place,
                fmt::format("The bytes carry no identity: they are read as those of a {}",
                            deviceTypeId())};
    }

    std::string deviceTypeId() const { return module.device().deviceTypeId; }

    ReadImage bare(const std::vector<char>& bytes)
    {
        return {decodedImage(bytes, fieldbus, module, place), {missingIdentity()}};
    }

    ReadImage ofBytes(const std::vector<char>& bytes, const std::string& name)
    {
        try {
            return bare(bytes);
        } catch (const Failure& failure) {
            Finding reason = failure.reason();
            if (reason.hint.empty()) {
                advise(name, {bytes.begin(), bytes.end()}, reason);
            }
            throw Failure(std::move(reason));
        }
    }

    ReadImage ofJson(const std::string& text, const std::string& name)
    {
        if (kindOf(text) == FileKind::Result) {
            throw Failure(Origin::Input, name,
                          std::string("This is ") + nameOf(FileKind::Result) +
                              ", expected what mxtool config --format json writes");
        }
        Values values = readValues(text, name);
        if (!values.image) {
            failAsValues(name, "Found values without an image, expected what mxtool "
                               "config --format json writes");
        }
        const DeviceReport& device = module.report();
        requireIdentity(values.deviceTypeId, device, module.name(), name);
        requireImageSize(*values.image, device.parameterBlock, name);
        ReadImage read{std::move(*values.image), {}};
        if (values.deviceTypeId.empty()) {
            read.findings.push_back(missingIdentity());
        }
        return read;
    }

    ReadImage ofTable(const CsvTable& table, const std::string& name)
    {
        if (isTableOfValues(table)) {
            failAsValues(name, "Found a table of names and values, expected bytes or registers");
        }
        TableImage written = imageOfTable(table, fieldbus, module, name);
        if (!written.hasIdentity) {
            written.notes.push_back(missingIdentity());
        }
        return {std::move(written.image), std::move(written.notes)};
    }

    Fieldbus fieldbus;
    const TranslatedModule& module;
    std::string place;
};

} // namespace

ReadImage imageOfFile(const std::vector<char>& content, const std::string& name, Fieldbus fieldbus,
                      const TranslatedModule& module, const std::string& place)
{
    try {
        return ImageSource(fieldbus, module, place).ofFile(content, name);
    } catch (const InvalidInput& invalid) {
        throw Failure(findingOf(invalid, place, Origin::Input));
    }
}

ReadImage imageOfWords(const std::string& words, Fieldbus fieldbus, const TranslatedModule& module,
                       const std::string& place)
{
    try {
        return ImageSource(fieldbus, module, place).ofWords(words);
    } catch (const InvalidInput& invalid) {
        throw Failure(findingOf(invalid, place, Origin::Request));
    }
}

} // namespace mxmodule
