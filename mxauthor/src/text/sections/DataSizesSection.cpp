#include "Sections.h"

#include <mxformat/DataSizes.h>
#include <mxformat/ImageAllocator.h>

#include <algorithm>

namespace mxauthor {

namespace {

const std::string separator = ",s=";

// Codes by their keys, in the order in which they are written.
using Codes = std::vector<std::pair<std::string, std::string>>;

// Codes of this many bytes: D, W and B for 4, 2 and 1.
std::string codesOfBytes(std::uint32_t size)
{
    return std::string(size / 4, 'D') + std::string(size % 4 / 2, 'W') + std::string(size % 2, 'B');
}

// The codes of the bytes that the channels of one direction use in the process image.
class ImageCodes
{
public:
    void pass(const ChannelRecord& record)
    {
        const std::uint32_t from = image.byte();
        const auto place =
            image.take(mxformat::channelKind(record.kind.value), record.bitLength.value);
        if (place && place->isBitField) {
            passed += std::string(image.byte() - from, 'B');
        } else if (place) {
            passed += std::string(place->byte - from, 'B') + codesOfBytes(place->size);
        }
    }

    std::string text() const { return passed + (image.bit() == 0 ? "" : "B"); }

private:
    mxformat::ImageAllocator image;
    std::string passed; // codes of the bytes before the open one
};

// The sizes computed from the channels and the block.
Codes codesFor(const Channels& channels, const ParameterBlock& block)
{
    ImageCodes in;
    ImageCodes out;
    for (const ChannelRecord& record : channels.records) {
        (mxformat::isInput(record.kind.value) ? in : out).pass(record);
    }
    return {{mxformat::inDataKey, in.text()},
            {mxformat::outDataKey, out.text()},
            {mxformat::parameterKey, std::string(block.block.value.size(), 'B')},
            {mxformat::diagnosisKey, ""}};
}

bool areCodes(const std::string& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char code) { return mxformat::sizeOfDataCode(code).has_value(); });
}

// The lines as codes, if there is one line for each key.
std::optional<Codes> codesOf(const DataSizes& group, const Codes& usual)
{
    if (group.lines.size() != usual.size()) {
        return std::nullopt;
    }
    Codes codes;
    for (std::size_t i = 0; i < usual.size(); ++i) {
        const std::string start = usual[i].first + separator;
        const std::string& line = group.lines[i].value;
        if (line.compare(0, start.size(), start) != 0 || !areCodes(line.substr(start.size()))) {
            return std::nullopt;
        }
        codes.emplace_back(usual[i].first, line.substr(start.size()));
    }
    return codes;
}

std::string lineList(const DataSizes& group)
{
    std::vector<std::string> lines;
    for (const Field<std::string>& line : group.lines) {
        lines.push_back(yamlText(line.value));
    }
    return flowList(lines);
}

std::string readCodes(const YAML::Node& node, SourceErrors& errors)
{
    std::string codes = readText(node, errors).value_or("");
    if (!areCodes(codes)) {
        errors.add(node, "\"" + node.Scalar() +
                             "\" are not datatype codes: D, W and B for 4, 2 and 1 bytes");
    }
    return codes;
}

DataSizes readLines(const YAML::Node& node, SourceErrors& errors)
{
    DataSizes group;
    for (const YAML::Node& item : readSequence(node, errors)) {
        group.lines.emplace_back(readText(item, errors).value_or(""));
    }
    return group;
}

template <typename Content>
const Content& builtGroup(std::uint16_t id, const BuildContext& context)
{
    static const Content none;
    const auto found = context.groups.find(id);
    return found == context.groups.end() ? none : std::get<Content>(found->second);
}

DataSizes computedSizes(const std::optional<YAML::Node>& node, BuildContext& context)
{
    std::optional<Section> section;
    if (node) {
        section.emplace(*node, "dataSizes", context.errors);
    }
    DataSizes group;
    for (const auto& [key, codes] :
         codesFor(builtGroup<Channels>(mxformat::group::channels, context),
                  builtGroup<ParameterBlock>(mxformat::group::parameterBlock, context))) {
        const auto stated = section ? section->find(key) : std::nullopt;
        group.lines.emplace_back(key + separator +
                                 (stated ? readCodes(*stated, context.errors) : codes));
    }
    return group;
}

} // namespace

std::string dumpDataSizes(const DumpContext& context)
{
    const auto* group = context.group<DataSizes>(mxformat::group::dataSizes);
    if (group == nullptr) {
        return "dataSizes: none\n";
    }
    const Codes usual =
        codesFor(context.groupOrNone<Channels>(mxformat::group::channels),
                 context.groupOrNone<ParameterBlock>(mxformat::group::parameterBlock));
    const auto codes = codesOf(*group, usual);
    if (!codes) {
        return "dataSizes: " + lineList(*group) + "\n";
    }
    FlowMapping line;
    for (std::size_t i = 0; i < usual.size(); ++i) {
        if (codes->at(i) != usual[i]) {
            line.add(usual[i].first, yamlText(codes->at(i).second));
        }
    }
    return line.empty() ? "" : "dataSizes: " + line.text() + "\n";
}

void buildDataSizes(const std::optional<YAML::Node>& node, BuildContext& context)
{
    if (isNone(node)) {
        return;
    }
    const bool listed = node && node->IsSequence();
    DataSizes group = listed ? readLines(*node, context.errors) : computedSizes(node, context);
    context.setGroup(mxformat::group::dataSizes, std::move(group), node);
}

} // namespace mxauthor
