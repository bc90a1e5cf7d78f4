#include "Sections.h"
#include "text/ByteText.h"

namespace mxauthor {

namespace {

const Bytes usualRest = {0x00, 0x03}; // as all files of the family have it

} // namespace

std::string dumpHeader(const DumpContext& context)
{
    const auto* group = context.group<Header>(headerGroup);
    if (group == nullptr) {
        return "header: none\n";
    }
    FlowMapping line;
    if (group->contentLength.value != context.contentLength()) {
        line.add("contentLength", std::to_string(group->contentLength.value));
    }
    if (group->rest.value != usualRest) {
        line.add("rest", yamlQuoted(toHex(group->rest.value)));
    }
    return line.empty() ? "" : "header: " + line.text() + "\n";
}

bool buildHeader(const std::optional<YAML::Node>& node, BuildContext& context)
{
    if (isNone(node)) {
        return false;
    }
    Header group;
    group.rest = usualRest;
    bool computed = true;
    if (node) {
        const Section section(*node, "header", context.errors);
        group.contentLength = section.word("contentLength", 0);
        group.rest = section.hex("rest", usualRest);
        computed = !section.has("contentLength");
    }
    context.groups[headerGroup] = std::move(group);
    context.marks[headerGroup] = node ? node->Mark() : YAML::Mark::null_mark();
    return computed;
}

} // namespace mxauthor
