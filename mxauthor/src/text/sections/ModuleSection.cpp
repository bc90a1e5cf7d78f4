#include "Sections.h"

#include <devices/parser/mx/ByteReaders.h>
#include <text/Hexadecimal.h>

namespace mxauthor {

namespace {

const Bytes usualRest = {0x00, 0x03}; // as all files of the family have it
constexpr std::size_t datasetLimit = mxformat::datasetLengthLimit - 1;

bool isUsualIdentity(const Dataset& dataset)
{
    return dataset.id.value == mxformat::identityDataset &&
           dataset.data.value.size() == mxformat::identitySize && dataset.unread.value == 0 &&
           dataset.trailer.value == 0;
}

std::string datasetText(const Dataset& dataset)
{
    FlowMapping line;
    line.add("id", hexText(dataset.id.value, 2));
    line.add("data", yamlQuoted(text::toHex(dataset.data.value)));
    if (dataset.unread.value != 0) {
        line.add("unread", std::to_string(dataset.unread.value));
    }
    if (dataset.trailer.value != 0) {
        line.add("trailer", hexText(dataset.trailer.value, 4));
    }
    return line.text();
}

std::string datasetLines(const std::vector<Dataset>& datasets, std::size_t count,
                         const std::string& indent)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += indent + "- " + datasetText(datasets[i]) + "\n";
    }
    return text;
}

Dataset readDataset(const YAML::Node& node, BuildContext& context)
{
    SourceErrors& errors = context.errors;
    const Section section(node, "dataset", errors);
    context.records[mxformat::group::identity].push_back(section.origin());
    section.require("id");
    Dataset dataset;
    dataset.id = section.byte("id", 0);
    dataset.data = section.hex("data");
    dataset.unread = section.byte("unread", 0);
    dataset.trailer = section.word("trailer", 0);
    if (dataset.data.value.size() > datasetLimit) {
        errors.add(*section.find("data"), std::to_string(dataset.data.value.size()) +
                                              " bytes, a dataset holds 127 at most");
    }
    return dataset;
}

std::vector<Dataset> readDatasets(const YAML::Node& node, BuildContext& context)
{
    std::vector<Dataset> datasets;
    for (const YAML::Node& item : readSequence(node, context.errors)) {
        datasets.push_back(readDataset(item, context));
    }
    return datasets;
}

Dataset readIdentity(const Section& section)
{
    section.require("type");
    section.require("id");
    const auto id = static_cast<std::uint32_t>(section.number("id", 0xFFFFFFFF, 0));
    Dataset dataset;
    dataset.id = mxformat::identityDataset;
    dataset.data.value = {section.byte("type", 0), static_cast<std::uint8_t>(id >> 24),
                          static_cast<std::uint8_t>(id >> 16), static_cast<std::uint8_t>(id >> 8),
                          static_cast<std::uint8_t>(id)};
    return dataset;
}

} // namespace

std::string dumpHeader(const DumpContext& context)
{
    const auto* group = context.group<Header>(mxformat::group::header);
    if (group == nullptr) {
        return "header: none\n";
    }
    FlowMapping line;
    if (group->contentLength.value != context.contentLength()) {
        line.add("contentLength", std::to_string(group->contentLength.value));
    }
    if (group->rest.value != usualRest) {
        line.add("rest", yamlQuoted(text::toHex(group->rest.value)));
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
    context.setGroup(mxformat::group::header, std::move(group), node);
    return computed;
}

std::string dumpModule(const DumpContext& context)
{
    const auto* identity = context.group<Identity>(mxformat::group::identity);
    if (identity == nullptr) {
        return "";
    }
    const std::vector<Dataset>& all = identity->datasets;
    if (all.empty()) {
        return "module: []\n";
    }
    if (!isUsualIdentity(all.back())) {
        return "module:\n" + datasetLines(all, all.size(), "  ");
    }
    const Bytes& data = all.back().data.value;
    std::string text = "module:\n  type: " + std::to_string(data[0]) +
                       "\n  id: " + hexText(devices::parser::mx::readU32BE(data.data() + 1), 8) +
                       "\n";
    if (all.size() > 1) {
        text += "  datasets:\n" + datasetLines(all, all.size() - 1, "    ");
    }
    return text;
}

void buildModule(const YAML::Node& node, BuildContext& context)
{
    Identity identity;
    if (node.IsSequence()) {
        identity.datasets = readDatasets(node, context);
    } else {
        const Section section(node, "module", context.errors);
        if (const auto datasets = section.find("datasets")) {
            identity.datasets = readDatasets(*datasets, context);
        }
        identity.datasets.push_back(readIdentity(section));
        context.records[mxformat::group::identity].push_back(section.origin());
    }
    context.setGroup(mxformat::group::identity, std::move(identity), node);
}

} // namespace mxauthor
