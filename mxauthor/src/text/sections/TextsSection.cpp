#include "Sections.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

constexpr std::uint16_t usualHead = 2; // two bytes that are not read

bool idsAreUnique(const std::vector<TextRecord>& texts)
{
    std::set<std::uint16_t> ids;
    return std::all_of(texts.begin(), texts.end(), [&ids](const TextRecord& record) {
        return ids.insert(record.id.value).second;
    });
}

std::string fixedLine(const TextRecord& record, bool unique)
{
    const std::string id = std::to_string(record.id.value);
    const std::string shown = yamlText(record.text.value);
    if (unique) {
        return "    " + id + ": " + shown + "\n";
    }
    return "    - " + FlowMapping().add("id", id).add("text", shown).text() + "\n";
}

// {ID: TEXT}, or a list where an identifier occurs twice.
std::string fixedLines(const std::vector<TextRecord>& texts)
{
    if (texts.empty()) {
        return "  fixed: {}\n";
    }
    const bool unique = idsAreUnique(texts);
    std::string lines = "  fixed:\n";
    for (const TextRecord& record : texts) {
        lines += fixedLine(record, unique);
    }
    return lines;
}

// The identifiers of texts in the order in which building the text form uses them.
class UseOrder
{
public:
    explicit UseOrder(const DumpContext& dumpContext) : context(dumpContext)
    {
        addOptions();
        addConversions();
        addParameters();
        addChannelNames();
        if (const auto* extension = context.group<Extension>(mxformat::group::extension)) {
            add(extension->gtinId.value);
        }
    }

    std::vector<std::uint16_t> ids; // each once

private:
    void add(std::uint16_t id)
    {
        if (context.isWrittenAsText(id) && seen.insert(id).second) {
            ids.push_back(id);
        }
    }

    // For fields in which 0 means no text.
    void addUnit(std::uint16_t id)
    {
        if (id != 0) {
            add(id);
        }
    }

    void addOptions()
    {
        const auto& group = context.groupOrNone<OptionLists>(mxformat::group::optionLists);
        for (const OptionList& list : group.lists) {
            for (const Option& option : list.options) {
                add(option.textId.value);
            }
        }
    }

    void addConversions()
    {
        const auto& group = context.groupOrNone<Conversions>(mxformat::group::conversions);
        for (const Conversion& entry : group.entries) {
            addUnit(entry.unitId.value);
        }
    }

    void addParameters()
    {
        const auto& group = context.groupOrNone<Parameters>(mxformat::group::parameters);
        for (const ParameterRecord& record : group.records) {
            add(record.nameId.value);
            addUnit(record.unitId.value);
        }
    }

    void addChannelNames()
    {
        const auto& group = context.groupOrNone<ChannelNames>(mxformat::group::channelNames);
        for (const ChannelName& entry : group.entries) {
            add(entry.textId.value);
        }
    }

    const DumpContext& context;
    std::set<std::uint16_t> seen;
};

// How many texts at the start of the table must be stated with their identifiers; building the text
// form assigns those of the others in the order of use.
std::size_t fixedTextCount(const TextTable& table, const DumpContext& context)
{
    const std::vector<std::uint16_t> used = UseOrder(context).ids;
    std::map<std::uint16_t, std::size_t> rankOf;
    for (std::size_t i = 0; i < used.size(); ++i) {
        rankOf.emplace(used[i], i);
    }
    // From the end back, as long as the texts are used, in their order.
    std::size_t count = table.texts.size();
    std::size_t rank = used.size();
    while (count > 0) {
        const auto found = rankOf.find(table.texts[count - 1].id.value);
        if (found == rankOf.end() || found->second >= rank) {
            break;
        }
        rank = found->second;
        --count;
    }
    return count;
}

// First identifier and step of the texts from number `from` on.
FlowMapping numbering(const TextTable& table, std::size_t from)
{
    FlowMapping line;
    if (table.head.value != usualHead) {
        line.add("head", std::to_string(table.head.value));
    }
    if (from == table.texts.size()) {
        return line;
    }
    const unsigned first = table.texts[from].id.value;
    const bool isLast = from + 1 == table.texts.size();
    const unsigned second = isLast ? first + 1 : table.texts[from + 1].id.value;
    if (first != 1) {
        line.add("first", std::to_string(first));
    }
    if (second > first + 1) {
        line.add("step", std::to_string(second - first));
    }
    return line;
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
            noteTextOrigin(item, context);
        }
        return;
    }
    for (const auto& [key, text] : readMapping(node, context.errors)) {
        const auto id = readNumber(key, 0xFFFF, context.errors).value_or(0);
        context.texts.fix(static_cast<std::uint16_t>(id),
                          readText(text, context.errors).value_or(""));
        noteTextOrigin(key, context);
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
    const auto* table = context.group<TextTable>(mxformat::group::texts);
    if (table == nullptr) {
        return "";
    }
    const std::vector<TextRecord>& texts = table->texts;
    const std::size_t count =
        context.textsAreFixed() ? texts.size() : fixedTextCount(*table, context);
    const FlowMapping line = numbering(*table, count);
    if (count == 0 && !texts.empty()) {
        return line.empty() ? "" : "texts: " + line.text() + "\n";
    }
    const auto end = texts.begin() + static_cast<std::ptrdiff_t>(count);
    return "texts:\n" + line.lines("  ") + fixedLines({texts.begin(), end});
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
        context.setGroup(mxformat::group::texts, std::move(table), node);
    }
}

} // namespace mxauthor
