#include "text/YamlEdit.h"

#include "text/YamlExtent.h"

#include <fmt/format.h>
#include <text/YamlScalar.h>

#include <algorithm>

namespace mxstation {

namespace {

// The end of a value; of a map of lines, that of its last value.
std::optional<std::size_t> endOfValue(const std::string& source, const YamlNode& node)
{
    const bool isLines = node.kind == YamlNode::Kind::Map && !node.isFlow && !node.members.empty();
    return isLines ? endOfMember(source, node, node.members.size() - 1) : endOfNode(source, node);
}

// The lines of `member`, those after the first with `indent` before them.
std::string linesText(const YamlMember& member, const std::string& indent,
                      const std::string& lineEnd)
{
    std::string all;
    for (const std::string& line : member.lines) {
        all += all.empty() ? "" : lineEnd + indent;
        all += line;
    }
    return all;
}

} // namespace

bool hasQuotedKeys(const std::string& source, const YamlNode& map)
{
    return map.isFlow && !map.members.empty() && source[map.members.front().first->offset] == '"';
}

std::string yamlKey(const std::string& name, bool isQuoted)
{
    return (isQuoted ? text::yamlQuoted(name) : text::yamlScalar(name)) + ": ";
}

const YamlNode* memberCalled(const YamlNode& map, const std::string& key)
{
    const auto found = std::find_if(map.members.begin(), map.members.end(),
                                    [&key](const auto& one) { return one.first->text == key; });
    return found == map.members.end() ? nullptr : found->second.get();
}

const YamlNode* ownMemberCalled(const YamlNode& map, const std::string& key)
{
    for (const auto& [name, value] : map.members) {
        if (name->text == key) {
            return value->offset > name->offset ? value.get() : nullptr;
        }
    }
    return nullptr;
}

std::vector<YamlError> usedAgain(const YamlNode& node, const std::string& why)
{
    std::vector<YamlError> errors;
    for (const YamlAlias& alias : node.aliases) {
        errors.push_back({alias.place, fmt::format("this alias repeats what line {} states, and {}",
                                                   node.place.line, why)});
    }
    return errors;
}

std::string YamlEdit::text(std::size_t entries) const
{
    std::vector<Change> ordered;
    std::copy_if(changes.begin(), changes.end(), std::back_inserter(ordered),
                 [entries](const Change& one) { return one.entry <= entries; });
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Change& a, const Change& b) { return a.begin < b.begin; });
    std::string edited;
    std::size_t copied = 0;
    for (const Change& one : ordered) {
        edited += source.substr(copied, one.begin - copied) + one.text;
        copied = one.end;
    }
    return edited + source.substr(copied);
}

bool YamlEdit::wrapScalar(const YamlNode& entry, bool isInBrackets, bool isQuoted,
                          const YamlMember& member)
{
    const auto end = endOfNode(source, entry);
    if (!end) {
        return false;
    }
    if (isInBrackets) {
        insert(entry.offset, "{" + yamlKey("module", isQuoted));
        insert(*end, ", " + member.flow + "}");
        return true;
    }
    const auto indent = indentation(entry);
    if (!indent) {
        return false;
    }
    const std::string lineEnd = lineEndAfter(source, *end);
    insert(entry.offset, yamlKey("module", false));
    insert(endOfLine(source, *end), lineEnd + *indent + linesText(member, *indent, lineEnd));
    return true;
}

bool YamlEdit::insertMember(const YamlNode& map, const YamlNode* value, const YamlMember& member)
{
    if (map.members.empty()) {
        const std::size_t offset = contentOfNode(source, map) + 1;
        const bool isFirst =
            std::none_of(changes.begin(), changes.end(),
                         [offset](const Change& one) { return one.begin == offset; });
        insert(offset, (isFirst ? "" : ", ") + member.flow);
        return map.isFlow;
    }
    const auto end = value != nullptr ? endOfValue(source, *value) : std::nullopt;
    if (!end) {
        return insertFirst(map, member);
    }
    if (map.isFlow) {
        insert(*end, ", " + member.flow);
        return true;
    }
    const auto indent = indentation(*map.members.front().first);
    if (indent) {
        const std::string lineEnd = lineEndAfter(source, *end);
        insert(endOfLine(source, *end), lineEnd + *indent + linesText(member, *indent, lineEnd));
    }
    return indent.has_value();
}

bool YamlEdit::insertFirst(const YamlNode& map, const YamlMember& member)
{
    const YamlNode& key = *map.members.front().first;
    const auto indent = map.isFlow ? std::optional<std::string>() : indentation(key);
    if (map.isFlow) {
        insert(key.offset, member.flow + ", ");
    } else if (indent) {
        const std::string lineEnd = lineEndAfter(source, key.offset);
        insert(key.offset, linesText(member, *indent, lineEnd) + lineEnd + *indent);
    }
    return map.isFlow || indent.has_value();
}

// The blanks that bring a line to the column of `node`. YAML gives tabs no width.
std::optional<std::string> YamlEdit::indentation(const YamlNode& node) const
{
    const std::string before =
        source.substr(node.place.lineStart, node.offset - node.place.lineStart);
    return before.find('\t') == std::string::npos ? std::optional(std::string(before.size(), ' '))
                                                  : std::nullopt;
}

void YamlEdit::insert(std::size_t offset, const std::string& inserted)
{
    replace(offset, offset, inserted);
}

void YamlEdit::replace(std::size_t begin, std::size_t end, const std::string& inserted)
{
    changes.push_back({begin, end, inserted, count});
}

} // namespace mxstation
