#include "PayloadKeys.h"
#include "Sections.h"
#include "text/ByteText.h"
#include "text/Gzip.h"

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::size_t largestDrawing = 0x100000; // as text; larger ones stay compressed

// Whether a literal block of YAML gives this text back, character by character.
bool isLiteral(const std::string& text)
{
    const auto isPrintable = [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); };
    const bool endsTwice = text.size() > 1 && text.compare(text.size() - 2, 2, "\n\n") == 0;
    return !text.empty() && text.front() != ' ' && text.front() != '\n' && !endsTwice &&
           std::all_of(text.begin(), text.end(), isPrintable);
}

// The drawing as text, when compressing it again gives these bytes.
std::optional<std::string> drawingOf(const Bytes& image)
{
    const auto text = gunzipped(image, largestDrawing);
    return text && isLiteral(*text) && gzipped(*text) == image ? text : std::nullopt;
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

} // namespace

std::string dumpImage(const DumpContext& context)
{
    const auto* group = context.group<ProductImage>(imageGroup);
    if (group == nullptr) {
        return "";
    }
    const Bytes& image = group->bytes.value;
    if (const auto drawing = drawingOf(image)) {
        return "image:\n  svg: " + literalBlock(*drawing, "    ");
    }
    return "image:\n  base64: " + yamlDigits(toBase64(image), "    ");
}

void buildImage(const YAML::Node& node, BuildContext& context)
{
    ProductImage group;
    if (node.IsScalar()) {
        group.bytes = readPayloadFile(node, context);
    } else {
        group.bytes = readPayloadKeys(Section(node, "image", context.errors), context);
    }
    context.setGroup(imageGroup, std::move(group), node);
}

} // namespace mxauthor
