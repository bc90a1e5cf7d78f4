#include "ParameterDefaults.h"
#include "Sections.h"
#include <text/Counted.h>

#include <mxformat/ParameterBlock.h>
#include <text/Hexadecimal.h>

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::size_t largestBlock = 255; // readers count its bytes in 8 bits
constexpr std::uint8_t fixedHeader = 2;   // version and descriptor

std::string sharedBits(const BuiltParameter& parameter, const BuiltParameter& other,
                       std::uint32_t byte, const SourceErrors& errors)
{
    const std::string bits = " shares bits of byte " + std::to_string(byte) + " with ";
    const int line = errors.markOf(other.node).line;
    if (line == errors.markOf(parameter.node).line) {
        return "this repeated parameter" + bits +
               "itself: leave out \"at\" and \"bit\", or let them advance, such as at: <n-1>";
    }
    return "\"" + parameter.name + "\"" + bits + "\"" + other.name + "\" in line " +
           std::to_string(line + 1);
}

void checkOverlaps(const BuildContext& context)
{
    std::vector<std::pair<mxformat::BlockField, const BuiltParameter*>> before;
    for (const BuiltParameter& parameter : context.parameters) {
        const mxformat::BlockField field = blockFieldOf(parameter.record);
        if (!field.exists() || !parameter.placeIsCertain) {
            continue;
        }
        const auto other = std::find_if(before.begin(), before.end(), [&field](const auto& entry) {
            return entry.first.overlaps(field);
        });
        if (other != before.end() && !parameter.mayOverlap) {
            const std::uint32_t byte = std::max(field.begin(), other->first.begin());
            context.errors.add(parameter.node,
                               sharedBits(parameter, *other->second, byte, context.errors));
        }
        before.emplace_back(field, &parameter);
    }
}

void readHeader(const Section& section, ParameterBlock& group)
{
    group.version = section.byte("version", 0);
    group.descriptor = section.byte("descriptor", 0);
    const std::uint8_t size = mxformat::parameterBlockHeaderSize(group.descriptor.value);
    if (size < fixedHeader) {
        section.errors().add(*section.find("descriptor"),
                             "the block would start within its own header");
        return;
    }
    const std::size_t skipped = size - fixedHeader;
    group.skipped = section.hex("skipped", Bytes(skipped));
    if (group.skipped.value.size() != skipped) {
        section.errors().add(*section.find("skipped"),
                             text::counted(group.skipped.value.size(), "byte") + ", descriptor " +
                                 std::to_string(group.descriptor.value) + " requires " +
                                 std::to_string(skipped));
    }
}

// All bytes of the block except the defaults.
Bytes blankBlock(const std::optional<Section>& section, const BuildContext& context)
{
    const std::size_t size = blockSizeFor(
        context.parameters, [](const BuiltParameter& parameter) { return parameter.record; });
    if (section && section->has("bytes")) {
        return section->hex("bytes");
    }
    if (size > largestBlock) {
        const auto last = std::max_element(
            context.parameters.begin(), context.parameters.end(), [](const auto& a, const auto& b) {
                return blockFieldOf(a.record).begin() < blockFieldOf(b.record).begin();
            });
        context.errors.add(last->node, "the parameter block would have " + std::to_string(size) +
                                           " bytes, 255 at most");
    }
    return Bytes(size);
}

void writeDefaults(Bytes& block, const BuildContext& context)
{
    for (const BuiltParameter& parameter : context.parameters) {
        const mxformat::BlockField field = blockFieldOf(parameter.record);
        if (!parameter.initial || !field.exists()) {
            continue;
        }
        if (!field.liesWithin(block.size())) {
            context.errors.addInLine(
                parameter.node, *parameter.initial,
                "the parameter block has " + text::counted(block.size(), "byte") +
                    ", no place for a default at byte " + std::to_string(field.begin()));
            continue;
        }
        field.write(block.data(), parameter.value);
    }
}

} // namespace

std::string dumpParameterBlock(const DumpContext& context)
{
    const auto* group = context.group<ParameterBlock>(mxformat::group::parameterBlock);
    const bool implied =
        !context.groupOrNone<Parameters>(mxformat::group::parameters).records.empty();
    if (group == nullptr) {
        return implied ? "parameterBlock: none\n" : "";
    }
    FlowMapping line;
    if (group->version.value != 0) {
        line.add("version", std::to_string(group->version.value));
    }
    if (group->descriptor.value != 0) {
        line.add("descriptor", std::to_string(group->descriptor.value));
    }
    const Bytes& skipped = group->skipped.value;
    if (std::any_of(skipped.begin(), skipped.end(), [](std::uint8_t byte) { return byte != 0; })) {
        line.add("skipped", yamlQuoted(text::toHex(skipped)));
    }
    if (group->block.value != defaultsOf(context).block) {
        line.add("bytes", yamlQuoted(text::toHex(group->block.value)));
    }
    return implied && line.empty() ? "" : "parameterBlock: " + line.text() + "\n";
}

void buildParameterBlock(const std::optional<YAML::Node>& node, BuildContext& context)
{
    checkOverlaps(context);
    if (isNone(node) || (!node && context.parameters.empty())) {
        return;
    }
    ParameterBlock group;
    std::optional<Section> section;
    if (node) {
        section.emplace(*node, "parameterBlock", context.errors);
        readHeader(*section, group);
    }
    group.block = blankBlock(section, context);
    writeDefaults(group.block.value, context);
    const YAML::Mark mark = node ? node->Mark() : context.marks[mxformat::group::parameters];
    context.setGroup(mxformat::group::parameterBlock, std::move(group), mark);
}

} // namespace mxauthor
