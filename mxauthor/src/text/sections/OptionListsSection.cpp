#include "Sections.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

constexpr std::size_t mostOptions = 255;

bool valuesAreUnique(const OptionList& list)
{
    std::set<std::uint64_t> values;
    return std::all_of(list.options.begin(), list.options.end(), [&values](const Option& option) {
        return values.insert(option.value.value).second;
    });
}

// {VALUE: TEXT, ...}, or [{VALUE: TEXT}, ...] where a value occurs twice.
std::string optionsText(const OptionList& list, const DumpContext& context)
{
    FlowMapping all;
    std::vector<std::string> each;
    for (const Option& option : list.options) {
        const std::string value = mxformat::WholeNumber::ofBits(option.value.value, true).text();
        const std::string text = context.text(option.textId.value);
        all.add(value, text);
        each.push_back(FlowMapping().add(value, text).text());
    }
    return valuesAreUnique(list) ? all.text() : flowList(each);
}

void readOption(const YAML::Node& value, const YAML::Node& text, BuildContext& context,
                OptionList& list, NamedEntry& entry)
{
    RecordOrigin& origin = context.records[mxformat::group::optionLists].back();
    origin.values["values"].push_back(value.Mark());
    origin.values["texts"].push_back(text.Mark());
    Option option;
    if (text.IsScalar() && parseInteger(text.Scalar()) && !parseInteger(value.Scalar())) {
        context.errors.add(value, "the value of an option comes first: " + text.Scalar() + ": " +
                                      value.Scalar());
        return;
    }
    option.value = readInteger(value, context.errors).value_or(Integer{}).bits();
    option.textId = readTextId(text, context);
    if (text.IsScalar()) {
        entry.options.emplace(text.Scalar(), option.value.value);
    }
    list.options.push_back(option);
}

OptionList readOptions(const YAML::Node& node, BuildContext& context, NamedEntry& entry)
{
    OptionList list;
    const std::vector<YAML::Node> parts =
        node.IsSequence() ? readSequence(node, context.errors) : std::vector<YAML::Node>{node};
    for (const YAML::Node& part : parts) {
        if (part.IsScalar()) {
            context.errors.add(
                part, "options are stated as VALUE: TEXT, such as {0: \"off\", 1: \"on\"}");
            break;
        }
        for (const auto& [value, text] : readMapping(part, context.errors)) {
            readOption(value, text, context, list, entry);
        }
    }
    if (list.options.size() > mostOptions) {
        context.errors.add(node, std::to_string(list.options.size()) +
                                     " options, a list has 255 at most");
    }
    return list;
}

} // namespace

std::string dumpOptionLists(const DumpContext& context)
{
    const auto* group = context.group<OptionLists>(mxformat::group::optionLists);
    if (group == nullptr) {
        return "";
    }
    if (group->lists.empty()) {
        return "optionLists: {}\n";
    }
    std::string text = "optionLists:\n";
    for (std::size_t i = 0; i < group->lists.size(); ++i) {
        const OptionList& list = group->lists[i];
        text += "  " + context.optionListNames()[i] +
                ":\n    id: " + std::to_string(list.id.value) +
                "\n    options: " + optionsText(list, context) + "\n";
    }
    return text;
}

void buildOptionLists(const YAML::Node& node, BuildContext& context)
{
    OptionLists group;
    for (const auto& [key, value] : readMapping(node, context.errors)) {
        const std::size_t errorsBefore = context.errors.size();
        const Section section(value, "optionList", context.errors);
        NamedEntry entry = namedEntry(key, section, context.optionLists);
        context.records[mxformat::group::optionLists].push_back(section.origin());
        OptionList list;
        if (const auto options = section.require("options")) {
            list = readOptions(*options, context, entry);
        }
        list.id = entry.id;
        entry.isCertain = context.errors.size() == errorsBefore;
        group.lists.push_back(std::move(list));
        context.optionLists.push_back(std::move(entry));
    }
    context.setGroup(mxformat::group::optionLists, std::move(group), node);
}

} // namespace mxauthor
