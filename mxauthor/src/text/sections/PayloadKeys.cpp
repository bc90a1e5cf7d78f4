#include "PayloadKeys.h"

#include "text/ByteText.h"
#include "text/Gzip.h"

#include <fstream>

namespace mxauthor {

namespace {

constexpr std::uintmax_t largestFile = 0x1000000;

// The content of a file of a reasonable size; an error at `node` and nothing when there is none.
std::optional<std::string> readFileOf(const YAML::Node& node, const std::filesystem::path& path,
                                      SourceErrors& errors)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        errors.add(node, "there is no file " + path.string());
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    std::string content(error || size > largestFile ? 0 : size, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file || error || size > largestFile) {
        errors.add(node,
                   "cannot read " + path.string() + (size > largestFile ? ": too large" : ""));
        return std::nullopt;
    }
    return content;
}

Bytes readBase64(const YAML::Node& node, SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    const auto bytes = text ? fromBase64(*text) : std::nullopt;
    if (text && !bytes) {
        errors.add(node, "Base64 text with its padding expected");
    }
    return bytes.value_or(Bytes());
}

Bytes readDrawing(const YAML::Node& node, SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    return text ? gzipped(*text) : Bytes();
}

} // namespace

Bytes readPayloadFile(const YAML::Node& node, BuildContext& context)
{
    const auto name = readScalar(node, context.errors);
    if (!name) {
        return {};
    }
    const std::filesystem::path path = context.directory / *name;
    context.filesRead.push_back(path);
    const auto content = readFileOf(node, path, context.errors);
    if (!content) {
        return {};
    }
    if (path.extension() == ".svg") {
        return gzipped(*content);
    }
    if (path.extension() != ".hex") {
        return {content->begin(), content->end()};
    }
    const auto bytes = fromHex(*content);
    if (!bytes) {
        context.errors.add(node, path.string() + " holds something else than hexadecimal digits");
    }
    return bytes.value_or(Bytes());
}

Bytes readPayloadKeys(const Section& section, BuildContext& context)
{
    const auto hex = section.find("hex");
    const auto base64 = section.find("base64");
    const auto file = section.find("file");
    const auto svg = section.find("svg");
    if (int{hex.has_value()} + int{base64.has_value()} + int{file.has_value()} +
            int{svg.has_value()} !=
        1) {
        section.errors().add(section.node(), "the bytes are stated once: hex, base64 or file");
    }
    if (hex) {
        return section.hex("hex");
    }
    if (base64) {
        return readBase64(*base64, context.errors);
    }
    if (svg) {
        return readDrawing(*svg, context.errors);
    }
    return file ? readPayloadFile(*file, context) : Bytes();
}

} // namespace mxauthor
