#include "BuildContext.h"

#include <text/NearestWords.h>

#include <algorithm>

namespace mxauthor {

void TextIds::start(std::uint16_t first, std::uint16_t step)
{
    next = first;
    stride = step;
}

void TextIds::fix(std::uint16_t id, const std::string& text)
{
    TextRecord record;
    record.id = id;
    record.text = text;
    texts.push_back(record);
    // Readers take the first text of an identifier: a later one cannot be referred to.
    if (used.insert(id).second) {
        idOfText.emplace(text, id);
    }
}

std::optional<std::uint16_t> TextIds::idOf(const std::string& text)
{
    const auto found = idOfText.find(text);
    if (found != idOfText.end()) {
        return found->second;
    }
    while (next <= 0xFFFF && used.count(static_cast<std::uint16_t>(next)) != 0) {
        next += stride;
    }
    if (next > 0xFFFF) {
        return std::nullopt;
    }
    const auto id = static_cast<std::uint16_t>(next);
    fix(id, text);
    return id;
}

void noteTextOrigin(const YAML::Node& node, BuildContext& context)
{
    RecordOrigin origin;
    origin.mark = context.errors.markOf(node);
    origin.repetition = context.errors.repetitionOf(node);
    context.records[mxformat::group::texts].resize(context.texts.records().size(), origin);
}

std::uint16_t readTextId(const YAML::Node& node, BuildContext& context)
{
    if (node.IsMap()) {
        const Section reference(node, "textReference", context.errors);
        reference.require("id");
        return reference.word("id", 0);
    }
    const auto text = readText(node, context.errors);
    if (!text) {
        return 0;
    }
    const auto id = context.texts.idOf(*text);
    noteTextOrigin(node, context);
    if (!id) {
        context.errors.add(node, "no text identifier is left for this text, the last is 65535");
    }
    return id.value_or(0);
}

std::uint16_t readTextId(const Section& section, const std::string& key, BuildContext& context)
{
    const auto node = section.find(key);
    return node ? readTextId(*node, context) : 0;
}

EntryReference readEntryReference(const YAML::Node& node, const std::vector<NamedEntry>& entries,
                                  const std::string& what, SourceErrors& errors)
{
    if (node.IsMap() || node.IsSequence()) {
        errors.add(node, "the name of an entry expected here: " + what +
                             "s are stated by name "
                             "under a key of their own");
        return {0, false};
    }
    const auto word = readScalar(node, errors);
    if (!word) {
        return {0, false};
    }
    const auto found =
        std::find_if(entries.begin(), entries.end(),
                     [&word](const NamedEntry& entry) { return entry.name == *word; });
    if (found != entries.end()) {
        return {found->id, found->isCertain};
    }
    if (parseInteger(*word)) {
        const auto id = readNumber(node, 0xFF, errors);
        return {static_cast<std::uint8_t>(id.value_or(0)), id.has_value()};
    }
    std::vector<std::string> names;
    std::transform(entries.begin(), entries.end(), std::back_inserter(names),
                   [](const NamedEntry& entry) { return entry.name; });
    errors.add(node, "unknown " + what + " \"" + *word + "\"" + text::acceptedWords(*word, names));
    return {0, false};
}

NamedEntry namedEntry(const YAML::Node& key, const Section& section,
                      const std::vector<NamedEntry>& before)
{
    NamedEntry entry;
    entry.name = key.Scalar();
    if (parseInteger(entry.name)) {
        section.errors().add(key, "a name expected, not a number: numbers are identifiers");
    }
    unsigned next = 1;
    for (const NamedEntry& other : before) {
        next = std::max(next, other.id + 1U);
    }
    if (next > 0xFF && !section.has("id")) {
        section.errors().add(key, "no identifier is left for \"" + entry.name +
                                      "\", the last is 255: state a free one as id");
    }
    entry.id = section.byte("id", static_cast<std::uint8_t>(next));
    return entry;
}

bool isNone(const std::optional<YAML::Node>& node)
{
    return node && node->IsScalar() && node->Scalar() == "none";
}

} // namespace mxauthor
