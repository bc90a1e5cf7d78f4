#include "Sections.h"

#include <text/Base64.h>
#include <text/Gzip.h>
#include <text/Hexadecimal.h>

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::size_t largestDrawing = 0x100000; // as text; larger ones stay compressed
constexpr std::size_t longestHex = 512;          // larger payloads are shorter as Base64

Bytes readBase64(const YAML::Node& node, SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    const auto bytes = text ? text::fromBase64(*text) : std::nullopt;
    if (text && !bytes) {
        errors.add(node, "Base64 text with its padding expected");
    }
    return bytes.value_or(Bytes());
}

Bytes readDrawing(const YAML::Node& node, SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    return text ? text::gzipped(*text) : Bytes();
}

// The bytes of the file that `node` names: of FILE.svg the text compressed, of FILE.hex the bytes
// that it spells, of others the bytes as they are.
Bytes readPayloadFile(const YAML::Node& node, BuildContext& context)
{
    const auto name = readScalar(node, context.errors);
    if (!name) {
        return {};
    }
    const std::filesystem::path path = context.directory / *name;
    context.filesRead.push_back(path);
    const NamedFile file = context.read(path);
    if (file.problem) {
        context.errors.add(node, *file.problem);
        return {};
    }
    if (path.extension() == ".svg") {
        return text::gzipped(file.content);
    }
    if (path.extension() != ".hex") {
        return {file.content.begin(), file.content.end()};
    }
    const auto bytes = text::fromHex(file.content);
    if (!bytes) {
        context.errors.add(node, path.string() + " holds something other than hexadecimal digits");
    }
    return bytes.value_or(Bytes());
}

// The bytes that a mapping gives by one of the keys "hex", "base64", "file" and "svg".
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

// Whether a literal block of YAML gives this text back, character by character.
bool isLiteral(const std::string& text)
{
    const auto isPrintable = [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); };
    const bool endsTwice = text.size() > 1 && text.compare(text.size() - 2, 2, "\n\n") == 0;
    return !text.empty() && text.front() != ' ' && text.front() != '\n' && !endsTwice &&
           std::all_of(text.begin(), text.end(), isPrintable);
}

// The drawing as text, if compressing it again gives these bytes.
std::optional<std::string> drawingOf(const Bytes& image)
{
    const auto text = text::gunzipped(image, largestDrawing);
    return text && isLiteral(*text) && text::gzipped(*text) == image ? text : std::nullopt;
}

std::string literalBlock(const std::string& text, const std::string& indent)
{
    const bool ended = text.back() == '\n';
    std::string block = ended ? "|\n" : "|-\n";
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        block += (end == from ? "" : indent) + text.substr(from, end - from) + "\n";
        from = end + 1;
    }
    return block;
}

std::string rawGroupLines(const Group& group)
{
    const Bytes payload = writePayload(group.content);
    std::string text = "  - id: " + hexText(group.id, 4) + "\n";
    if (group.checksum.value != 0) {
        text += "    checksum: " + hexText(group.checksum.value, 4) + "\n";
    }
    return text + (payload.size() <= longestHex
                       ? "    hex: " + yamlDigits(text::toHex(payload), "      ")
                       : "    base64: " + yamlDigits(text::toBase64(payload), "      "));
}

} // namespace

std::string dumpImage(const DumpContext& context)
{
    const auto* group = context.group<ProductImage>(mxformat::group::productImage);
    if (group == nullptr) {
        return "";
    }
    const Bytes& image = group->bytes.value;
    if (const auto drawing = drawingOf(image)) {
        return "image:\n  svg: " + literalBlock(*drawing, "    ");
    }
    return "image:\n  base64: " + yamlDigits(text::toBase64(image), "    ");
}

void buildImage(const YAML::Node& node, BuildContext& context)
{
    ProductImage group;
    if (node.IsScalar()) {
        group.bytes = readPayloadFile(node, context);
    } else {
        group.bytes = readPayloadKeys(Section(node, "image", context.errors), context);
    }
    context.setGroup(mxformat::group::productImage, std::move(group), node);
}

std::string dumpRawGroups(const DumpContext& context)
{
    std::string text;
    const std::vector<Group>& groups = context.file().groups;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (!context.isTyped(i)) {
            text += (text.empty() ? "raw:\n" : "") + rawGroupLines(groups[i]);
        }
    }
    return text;
}

void buildRawGroups(const YAML::Node& node, BuildContext& context)
{
    for (const YAML::Node& item : readSequence(node, context.errors)) {
        const Section section(item, "rawGroup", context.errors);
        section.require("id");
        Group group;
        group.id = section.word("id", 0);
        group.checksum = section.word("checksum", 0);
        RawGroup content;
        content.bytes = readPayloadKeys(section, context);
        group.content = std::move(content);
        context.rawGroups.push_back(std::move(group));
        context.rawMarks.push_back(item.Mark());
    }
}

} // namespace mxauthor
