#include "PayloadKeys.h"
#include "Sections.h"
#include "text/ByteText.h"

namespace mxauthor {

namespace {

constexpr std::size_t longestHex = 512; // larger payloads are shorter as Base64

std::string rawGroupLines(const Group& group)
{
    const Bytes payload = writePayload(group.content);
    std::string text = "  - id: " + hexText(group.id, 4) + "\n";
    if (group.checksum.value != 0) {
        text += "    checksum: " + hexText(group.checksum.value, 4) + "\n";
    }
    return text + (payload.size() <= longestHex
                       ? "    hex: " + yamlDigits(toHex(payload), "      ")
                       : "    base64: " + yamlDigits(toBase64(payload), "      "));
}

} // namespace

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
