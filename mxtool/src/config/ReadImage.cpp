#include "config/ReadImage.h"

#include "FileKind.h"
#include "FormatOfName.h"
#include "HexBytes.h"
#include "InputFile.h"
#include "InvalidInput.h"
#include "config/DecodedImage.h"
#include "config/RegisterWords.h"
#include "config/ValuesFile.h"
#include "config/WrittenTable.h"

#include <mxauthor/ForeignContent.h>

#include <fmt/format.h>

#include <filesystem>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

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
    if (endsInExtension(name, ".json")) {
        return Content::Json;
    }
    if (endsInExtension(name, ".csv")) {
        return isWord ? Content::Words : Content::Csv;
    }
    if (endsInExtension(name, ".txt") || endsInExtension(name, ".hex")) {
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

// The hint for a file that is not an image.
std::string hintFor(const std::string& name, const std::string& text)
{
    const FileKind kind = kindOf(text);
    const bool isYaml = endsInExtension(name, ".yaml") || endsInExtension(name, ".yml");
    if (kind == FileKind::Values || (kind == FileKind::Other && isYaml)) {
        return "--values takes a file of values";
    }
    const auto found = kind == FileKind::Other ? mxauthor::foreignContent(text) : nameOf(kind);
    const std::string taker = callThatTakes(kind, name);
    return found ? fmt::format("the file is {}, not bytes that were read from a module{}{}", *found,
                               taker.empty() ? "" : "; ", taker)
                 : "";
}

class ImageReader
{
public:
    ImageReader(FieldbusType bus, TranslatedModule& translated, std::string givenPlace)
        : fieldbus(bus), module(translated), place(std::move(givenPlace))
    {}

    ReadImage ofFile(const std::string& path)
    {
        const std::vector<char> bytes = loadBytes(path);
        const std::string text(bytes.begin(), bytes.end());
        const std::string name = inputName(path);
        switch (contentOf(path, text, decodedSize(fieldbus, module))) {
        case Content::Json:
            return ofJson(text, name);
        case Content::Csv:
            return ofTable(readCsv(text, name), name);
        case Content::Words:
            return bare(bytesOfWords(text));
        default:
            return ofBytes(bytes, path);
        }
    }

    ReadImage ofWords(const std::string& words) { return bare(bytesOfWords(words)); }

private:
    // Throws an `InvalidInput`.
    std::vector<char> bytesOfWords(const std::string& words)
    {
        return fieldbus == FieldbusType::Modbus
                   ? bytesOfRegisters(words, decodedSize(fieldbus, module))
                   : bytesOfHex(words);
    }

    Diagnostic missingIdentity() const
    {
        return {"note", place,
                fmt::format("The bytes carry no identity: they are read as those of a {}",
                            deviceTypeId())};
    }

    std::string deviceTypeId() const { return module.device().deviceTypeId; }

    ReadImage bare(const std::vector<char>& bytes)
    {
        return {decodedImage(bytes, fieldbus, module, place), {missingIdentity()}};
    }

    ReadImage ofBytes(const std::vector<char>& bytes, const std::string& path)
    {
        try {
            return bare(bytes);
        } catch (Failure& failure) {
            if (failure.diagnostic.hint.empty()) {
                failure.diagnostic.hint = hintFor(path, {bytes.begin(), bytes.end()});
            }
            throw;
        }
    }

    ReadImage ofJson(const std::string& text, const std::string& name)
    {
        if (kindOf(text) == FileKind::Result) {
            throw Failure(ExitCode::Input, name,
                          std::string("This is ") + nameOf(FileKind::Result) +
                              ", expected what mxtool config --format json writes");
        }
        Values values = readValues(text, name);
        if (!values.image) {
            throw Failure(ExitCode::Input, name,
                          "Found values without an image, expected what mxtool "
                          "config --format json writes",
                          "--values takes a file of values");
        }
        const DeviceReport device = module.report();
        requireIdentity(values.deviceTypeId, device, module.name(), name);
        requireImageSize(*values.image, device, name);
        ReadImage read{std::move(*values.image), {}};
        if (values.deviceTypeId.empty()) {
            read.notes.push_back(missingIdentity());
        }
        return read;
    }

    ReadImage ofTable(const CsvTable& table, const std::string& name)
    {
        if (isTableOfValues(table)) {
            throw Failure(ExitCode::Input, name,
                          "Found a table of names and values, expected bytes or registers",
                          "--values takes a file of values");
        }
        TableImage written = imageOfTable(table, fieldbus, module, name);
        if (!written.hasIdentity) {
            written.notes.push_back(missingIdentity());
        }
        return {std::move(written.image), std::move(written.notes)};
    }

    FieldbusType fieldbus;
    TranslatedModule& module;
    std::string place;
};

} // namespace

ReadImage readImage(const std::string& words, const std::string& option, FieldbusType fieldbus,
                    TranslatedModule& module)
{
    const std::string place = option + " " + words;
    ImageReader reader(fieldbus, module, place);
    std::error_code ignored;
    const bool isFile = words == "-" || std::filesystem::exists(words, ignored);
    try {
        return isFile ? reader.ofFile(words) : reader.ofWords(words);
    } catch (const InvalidInput& invalid) {
        throw Failure(isFile ? ExitCode::Input : ExitCode::Usage, place,
                      std::string(invalid.what()) + (isFile || !invalid.hint.empty()
                                                         ? ""
                                                         : ", or the name of an existing file"),
                      invalid.hint);
    }
}

} // namespace mxtool
