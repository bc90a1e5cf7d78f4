#include "text/FirstEntry.h"

#include "text/BlockRow.h"
#include "text/EndedText.h"
#include "text/FlowRow.h"

#include <algorithm>

namespace mxstation {

namespace {

// Where the list begins in "modules: []" or "modules:", with the blanks before it, if nothing else
// is there; a list of lines is made in the lines after it.
std::optional<YamlExtent> emptyList(const EditedText& text)
{
    const auto& members = text.root().members;
    const auto member = std::find_if(members.begin(), members.end(),
                                     [](const auto& one) { return one.first->text == "modules"; });
    const std::string& source = text.source();
    const auto end = endOfNode(source, *member->first);
    const std::size_t colon = end ? afterBlanks(source, *end) : source.size();
    if (colon == source.size() || source[colon] != ':') {
        return std::nullopt;
    }
    const std::size_t value = afterBlanks(source, colon + 1);
    for (const char* const word : {"[]", "~", "null"}) {
        const std::size_t last = value + std::string(word).size();
        if (source.compare(value, last - value, word) == 0 &&
            (last == source.size() || source.find_first_of(" \t\r\n,}", last) == last)) {
            return YamlExtent{colon + 1, last};
        }
    }
    const bool isNothing =
        value == source.size() || source.find_first_of("\r\n#,}", value) == value;
    return isNothing ? std::optional(YamlExtent{colon + 1, colon + 1}) : std::nullopt;
}

std::string linesAfter(const std::string& source, std::size_t position, const YamlMember& item,
                       const std::string& indent)
{
    const std::string newline = lineEndAfter(source, position);
    std::string lines = newline + itemLines(item, indent, newline);
    return lines.substr(0, lines.size() - newline.size());
}

// The blanks before the dashes, at least `least`: not less than before the comments after
// `position`, which would become the first entry's.
std::string indentBefore(const std::string& source, std::size_t position, std::size_t least)
{
    std::size_t line = source.find('\n', position);
    while (line != std::string::npos) {
        const std::size_t first = afterBlanks(source, line + 1);
        if (first < source.size() && source[first] == '#') {
            least = std::max(least, first - line - 1);
        } else if (first != endOfLine(source, first)) {
            break;
        }
        line = source.find('\n', first);
    }
    return std::string(least, ' ');
}

// The first item of a list without one.
std::string withFirst(const EditedText& text, const YamlMember& item)
{
    std::string changed = text.source();
    const YamlNode& root = text.root();
    const YamlNode* const list = text.list();
    const auto empty = emptyList(text);
    if (empty && !root.isFlow) {
        const std::size_t end = endOfLine(changed, empty->end);
        const YamlNode& key = *root.members.front().first;
        const std::string indent = indentBefore(changed, end, key.offset - key.place.lineStart + 2);
        changed.insert(end, linesAfter(changed, end, item, indent));
        return changed.erase(empty->begin, empty->end - empty->begin);
    }
    if (list != nullptr && list->isFlow) {
        return FlowRow(text.source(), *list).with(0, item.flow);
    }
    return empty ? changed.replace(empty->begin, empty->end - empty->begin, " [" + item.flow + "]")
                 : changed;
}

// The list with its first item, in a text without one.
std::string withList(const EditedText& text, const YamlMember& item)
{
    const YamlNode& root = text.root();
    const std::string& source = text.source();
    if (root.kind == YamlNode::Kind::Map && root.isFlow) {
        YamlEdit edit(source);
        const bool isQuoted = hasQuotedKeys(source, root);
        const YamlMember member{yamlKey("modules", isQuoted) + "[" + item.flow + "]", {}};
        const YamlNode* const last =
            root.members.empty() ? nullptr : ownMemberCalled(root, root.members.back().first->text);
        return edit.insertMember(root, last, member) ? edit.text(0) : source;
    }
    const EndedText ended(text);
    const std::size_t end = source.empty() ? 0 : endOfDocument(ended.text());
    const std::string before = source.empty() ? "" : ended.text().substr(0, end);
    const std::string indent(root.members.empty() ? 0
                                                  : root.members.front().first->offset -
                                                        root.members.front().first->place.lineStart,
                             ' ');
    const std::string all = before + indent + "modules:" + ended.newline() +
                            itemLines(item, indent + "  ", ended.newline());
    return source.empty() ? all : ended.restored(all + ended.text().substr(end));
}

} // namespace

std::string withFirstEntry(const EditedText& text, const YamlMember& item)
{
    const bool isStated = memberCalled(text.root(), "modules") != nullptr;
    return isStated ? withFirst(text, item) : withList(text, item);
}

std::string withoutOnlyEntry(const EditedText& text)
{
    const EndedText ended(text);
    const BlockRow row(ended.text(), text.root(), *text.list());
    const auto empty = emptyList(text);
    if (!row.isKnown() || !empty || empty->begin != empty->end) {
        text.reject(text.list()->place);
    }
    std::string changed = ended.text();
    changed.erase(row.item(0).begin, row.item(0).end - row.item(0).begin);
    return ended.restored(changed.insert(empty->begin, " []"));
}

} // namespace mxstation
