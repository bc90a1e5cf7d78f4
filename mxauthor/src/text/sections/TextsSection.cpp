#include "Sections.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

constexpr std::uint16_t usualHead = 2; // two bytes that nobody reads

bool idsAreUnique(const TextTable& table)
{
    std::set<std::uint16_t> ids;
    return std::all_of(table.texts.begin(), table.texts.end(), [&ids](const TextRecord& record) {
        return ids.insert(record.id.value).second;
    });
}

// {ID: TEXT}, or a list where an identifier stands twice.
std::string fixedLines(const TextTable& table)
{
    const bool unique = idsAreUnique(table);
    std::string text;
    for (const TextRecord& record : table.texts) {
        const std::string id = std::to_string(record.id.value);
        const std::string shown = yamlText(record.text.value);
        text += "    " +
                (unique ? id + ": " + shown
                        : "- " + FlowMapping().add("id", id).add("text", shown).text()) +
                "\n";
    }
    return text;
}

std::string fixedTexts(const TextTable& table)
{
    std::string text = "texts:\n";
    if (table.head.value != usualHead) {
        text += "  head: " + std::to_string(table.head.value) + "\n";
    }
    return text + (table.texts.empty() ? "  fixed: {}\n" : "  fixed:\n" + fixedLines(table));
}

void readFixed(const YAML::Node& node, BuildContext& context)
{
    if (node.IsSequence()) {
        for (const YAML::Node& item : readSequence(node, context.errors)) {
            const Section section(item, "fixedText", context.errors);
            section.require("id");
            const auto text = section.require("text");
            context.texts.fix(section.word("id", 0),
                              text ? readText(*text, context.errors).value_or("") : "");
        }
        return;
    }
    for (const auto& [key, text] : readMapping(node, context.errors)) {
        const auto id = readNumber(key, 0xFFFF, context.errors).value_or(0);
        context.texts.fix(static_cast<std::uint16_t>(id),
                          readText(text, context.errors).value_or(""));
    }
}

std::uint16_t readStep(const Section& section)
{
    const std::uint16_t step = section.word("step", 1);
    if (step == 0) {
        section.errors().add(*section.find("step"), "identifiers differ by 1 at least");
    }
    return std::max<std::uint16_t>(step, 1);
}

} // namespace

std::string dumpTexts(const DumpContext& context)
{
    const auto* table = context.group<TextTable>(textsGroup);
    if (table == nullptr) {
        return "";
    }
    if (context.textsAreFixed() || table->texts.empty()) {
        return fixedTexts(*table);
    }
    const unsigned first = table->texts[0].id.value;
    const unsigned second = table->texts.size() > 1 ? table->texts[1].id.value : first + 1;
    FlowMapping line;
    if (table->head.value != usualHead) {
        line.add("head", std::to_string(table->head.value));
    }
    if (first != 1) {
        line.add("first", std::to_string(first));
    }
    if (second > first + 1) {
        line.add("step", std::to_string(second - first));
    }
    return line.empty() ? "" : "texts: " + line.text() + "\n";
}

void startTexts(const std::optional<YAML::Node>& node, BuildContext& context)
{
    if (!node) {
        return;
    }
    const Section section(*node, "texts", context.errors);
    context.texts.start(section.word("first", 1), readStep(section));
    if (const auto fixed = section.find("fixed")) {
        readFixed(*fixed, context);
    }
}

void buildTextTable(const std::optional<YAML::Node>& node, BuildContext& context)
{
    TextTable table;
    table.head = usualHead;
    if (node) {
        table.head = Section(*node, "texts", context.errors).word("head", usualHead);
    }
    table.texts = context.texts.records();
    if (node || !table.texts.empty()) {
        context.groups[textsGroup] = std::move(table);
        context.marks[textsGroup] = node ? node->Mark() : YAML::Mark::null_mark();
    }
}

} // namespace mxauthor
