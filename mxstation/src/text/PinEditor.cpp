#include "text/PinEditor.h"

#include "text/YamlExtent.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxstation {

namespace {

// Whether the keys of the map in brackets have double quotes, as in JSON.
bool hasQuotedKeys(const std::string& source, const YamlNode& map)
{
    return map.isFlow && !map.members.empty() && source[map.members.front().first->offset] == '"';
}

std::string keyText(const std::string& name, bool isQuoted)
{
    return isQuoted ? "\"" + name + "\": " : name + ": ";
}

std::string addressMembers(const AddedAddresses& addresses, bool isQuoted,
                           const std::string& between)
{
    std::string members;
    if (addresses.input) {
        members += keyText("in", isQuoted) + std::to_string(*addresses.input);
    }
    if (addresses.output) {
        members += (members.empty() ? "" : between) + keyText("out", isQuoted) +
                   std::to_string(*addresses.output);
    }
    return members;
}

std::string addressesMember(const AddedAddresses& addresses, bool isQuoted)
{
    return keyText("at", isQuoted) + "{" + addressMembers(addresses, isQuoted, ", ") + "}";
}

// The value of the member `key`; null also if it is an alias, whose value is elsewhere.
const YamlNode* ownValue(const YamlNode& map, const std::string& key)
{
    for (const auto& [name, value] : map.members) {
        if (name->text == key) {
            return value->offset > name->offset ? value.get() : nullptr;
        }
    }
    return nullptr;
}

const YamlNode* memberCalled(const YamlNode& map, const std::string& key)
{
    const auto found = std::find_if(map.members.begin(), map.members.end(),
                                    [&key](const auto& one) { return one.first->text == key; });
    return found == map.members.end() ? nullptr : found->second.get();
}

std::vector<YamlError> usedAgain(const YamlNode& node)
{
    std::vector<YamlError> errors;
    for (const SourcePlace& alias : node.aliases) {
        errors.push_back(
            {alias, fmt::format("this alias repeats what line {} states, and each place has "
                                "addresses of its own",
                                node.place.line)});
    }
    return errors;
}

} // namespace

PinEditor::PinEditor(const std::string& text, const YamlNode& tree) : source(text), root(tree) {}

std::vector<YamlError> PinEditor::add(const YamlNode& entry, const YamlNode& list,
                                      const AddedAddresses& addresses)
{
    const bool isMap = entry.kind == YamlNode::Kind::Map;
    const YamlNode* const stated = isMap ? memberCalled(entry, "at") : nullptr;
    if (!entry.aliases.empty()) {
        return usedAgain(entry);
    }
    if (stated != nullptr && !stated->aliases.empty()) {
        return usedAgain(*stated);
    }
    const bool isAdded = stated != nullptr ? addToAddresses(*stated, addresses)
                         : isMap           ? addToMap(entry, addresses)
                                           : addToScalar(entry, list.isFlow, addresses);
    ++count;
    return isAdded ? std::vector<YamlError>()
                   : std::vector<YamlError>{{entry.place, cannotBeAdded}};
}

std::string PinEditor::text(std::size_t entries) const
{
    std::vector<Insertion> ordered;
    std::copy_if(insertions.begin(), insertions.end(), std::back_inserter(ordered),
                 [entries](const Insertion& one) { return one.entry < entries; });
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Insertion& a, const Insertion& b) { return a.offset < b.offset; });
    std::string edited;
    std::size_t copied = 0;
    for (const Insertion& one : ordered) {
        edited += source.substr(copied, one.offset - copied) + one.text;
        copied = one.offset;
    }
    return edited + source.substr(copied);
}

bool PinEditor::addToScalar(const YamlNode& entry, bool isInBrackets,
                            const AddedAddresses& addresses)
{
    const auto end = endOfNode(source, entry);
    if (!end) {
        return false;
    }
    if (isInBrackets) {
        const bool isQuoted = hasQuotedKeys(source, root);
        insert(entry.offset, "{" + keyText("module", isQuoted));
        insert(*end, ", " + addressesMember(addresses, isQuoted) + "}");
        return true;
    }
    const auto indent = indentation(entry);
    if (!indent) {
        return false;
    }
    insert(entry.offset, keyText("module", false));
    insert(endOfLine(source, *end),
           lineEndAfter(source, *end) + *indent + addressesMember(addresses, false));
    return true;
}

bool PinEditor::addToMap(const YamlNode& entry, const AddedAddresses& addresses)
{
    const YamlNode* const module = ownValue(entry, "module");
    const YamlNode* const value = module != nullptr ? module : ownValue(entry, "reserve");
    return insertMember(entry, value, addressesMember(addresses, hasQuotedKeys(source, entry)));
}

bool PinEditor::addToAddresses(const YamlNode& stated, const AddedAddresses& addresses)
{
    if (stated.members.empty()) {
        insert(contentOfNode(source, stated) + 1,
               addressMembers(addresses, hasQuotedKeys(source, root), ", "));
        return true;
    }
    const std::string members = addressMembers(addresses, hasQuotedKeys(source, stated), ", ");
    return insertMember(stated, ownValue(stated, stated.members.back().first->text), members);
}

// Inserts `member` after `value`, one of `map`; first, where that has no known end.
bool PinEditor::insertMember(const YamlNode& map, const YamlNode* value, const std::string& member)
{
    const auto end = value != nullptr ? endOfNode(source, *value) : std::nullopt;
    if (!end) {
        return insertFirst(map, member);
    }
    if (map.isFlow) {
        insert(*end, ", " + member);
        return true;
    }
    const auto indent = indentation(*map.members.front().first);
    if (indent) {
        insert(endOfLine(source, *end), lineEndAfter(source, *end) + *indent + member);
    }
    return indent.has_value();
}

bool PinEditor::insertFirst(const YamlNode& map, const std::string& member)
{
    const YamlNode& key = *map.members.front().first;
    const auto indent = map.isFlow ? std::optional<std::string>() : indentation(key);
    if (map.isFlow || indent) {
        insert(key.offset,
               member + (map.isFlow ? ", " : lineEndAfter(source, key.offset) + indent.value()));
    }
    return map.isFlow || indent.has_value();
}

// The blanks that bring a line to the column of `node`. YAML gives tabs no width.
std::optional<std::string> PinEditor::indentation(const YamlNode& node) const
{
    const std::string before =
        source.substr(node.place.lineStart, node.offset - node.place.lineStart);
    return before.find('\t') == std::string::npos ? std::optional(std::string(before.size(), ' '))
                                                  : std::nullopt;
}

void PinEditor::insert(std::size_t offset, const std::string& inserted)
{
    insertions.push_back({offset, inserted, count});
}

} // namespace mxstation
