#include "Sections.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

constexpr std::uint8_t usualKind = 's';
constexpr std::size_t longestKey = 200; // YAML limits the length of a key before its colon

// Whether the entries can be written as keys with values.
bool areKeysWithValues(const std::vector<Entry>& entries)
{
    std::set<std::string> keys;
    return std::all_of(entries.begin(), entries.end(), [&keys](const Entry& entry) {
        return entry.kind.value == usualKind && entry.key.value.size() <= longestKey &&
               keys.insert(entry.key.value).second;
    });
}

std::string entryLine(const Entry& entry)
{
    FlowMapping line;
    line.add("key", yamlText(entry.key.value));
    if (entry.kind.value != usualKind) {
        line.add("kind", yamlText(std::string(1, static_cast<char>(entry.kind.value))));
    }
    return line.add("value", yamlText(entry.value.value)).text();
}

std::string dumpEntries(const DumpContext& context, std::uint16_t id)
{
    const auto* group = context.group<Entries>(id);
    if (group == nullptr) {
        return "";
    }
    std::string text = groupWord(id) + ":";
    if (group->entries.empty()) {
        return text + " {}\n";
    }
    text += "\n";
    const bool keyed = areKeysWithValues(group->entries);
    for (const Entry& entry : group->entries) {
        text += "  " +
                (keyed ? yamlText(entry.key.value) + ": " + yamlText(entry.value.value)
                       : "- " + entryLine(entry)) +
                "\n";
    }
    return text;
}

std::string readKey(const YAML::Node& node, SourceErrors& errors)
{
    std::string key = readText(node, errors).value_or("");
    if (key.find(',') != std::string::npos) {
        errors.add(node, "a key cannot hold a comma, it would end there");
    }
    return key;
}

std::uint8_t readEntryKind(const Section& section)
{
    const auto node = section.find("kind");
    if (!node) {
        return usualKind;
    }
    const auto text = readText(*node, section.errors());
    if (text && text->size() != 1) {
        section.errors().add(*node, "one character expected, such as s");
        return usualKind;
    }
    return text ? static_cast<std::uint8_t>(text->front()) : usualKind;
}

Entry readEntry(const YAML::Node& node, std::vector<RecordOrigin>& origins, SourceErrors& errors)
{
    const Section section(node, "entry", errors);
    origins.push_back(section.origin());
    Entry entry;
    if (const auto key = section.require("key")) {
        entry.key = readKey(*key, errors);
    }
    entry.kind = readEntryKind(section);
    if (const auto value = section.require("value")) {
        entry.value = readText(*value, errors).value_or("");
    }
    return entry;
}

void buildEntries(const YAML::Node& node, std::uint16_t id, BuildContext& context)
{
    Entries group;
    std::vector<RecordOrigin>& origins = context.records[id];
    if (node.IsSequence()) {
        for (const YAML::Node& item : readSequence(node, context.errors)) {
            group.entries.push_back(readEntry(item, origins, context.errors));
        }
    } else {
        for (const auto& [key, value] : readMapping(node, context.errors)) {
            Entry& entry = group.entries.emplace_back();
            entry.key = readKey(key, context.errors);
            entry.kind = usualKind;
            entry.value = readText(value, context.errors).value_or("");
            origins.push_back({key.Mark(), {{"value", {value.Mark()}}}});
        }
    }
    context.setGroup(id, std::move(group), node);
}

} // namespace

std::string dumpCatalogue(const DumpContext& context)
{
    return dumpEntries(context, mxformat::group::catalogue);
}

std::string dumpComponent(const DumpContext& context)
{
    return dumpEntries(context, mxformat::group::component);
}

void buildCatalogue(const YAML::Node& node, BuildContext& context)
{
    buildEntries(node, mxformat::group::catalogue, context);
}

void buildComponent(const YAML::Node& node, BuildContext& context)
{
    buildEntries(node, mxformat::group::component, context);
}

} // namespace mxauthor
