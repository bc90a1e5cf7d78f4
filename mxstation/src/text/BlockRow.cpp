#include "text/BlockRow.h"

#include <algorithm>

namespace mxstation {

namespace {

// The line of the first key after `list`, or the end of the document.
std::size_t lineAfterList(const std::string& source, const YamlNode& root, const YamlNode& list)
{
    std::size_t limit = endOfDocument(source);
    for (const auto& member : root.members) {
        if (member.first->offset > list.offset) {
            limit = std::min(limit, member.first->place.lineStart);
        }
    }
    return limit;
}

} // namespace

std::size_t endOfDocument(const std::string& source)
{
    for (std::size_t at = source.find("..."); at != std::string::npos;
         at = source.find("...", at + 1)) {
        const bool isLineStart = at == 0 || source[at - 1] == '\n';
        const std::size_t end = at + 3;
        if (isLineStart && (end == source.size() || source.find_first_of(" \t\r\n", end) == end)) {
            return at;
        }
    }
    return source.size();
}

BlockRow::BlockRow(const std::string& text, const YamlNode& root, const YamlNode& list)
    : source(text), limit(lineAfterList(text, root, list))
{
    const std::size_t dash = contentOfNode(source, list);
    begin = lineOf(dash);
    column = dash - begin;
    known = !list.items.empty() && isDash(begin) && readItems(list);
}

bool BlockRow::readItems(const YamlNode& list)
{
    std::vector<std::size_t> dashes;
    for (const std::size_t start : list.starts) {
        const std::size_t least = dashes.empty() ? begin : lineAfter(dashes.back());
        const std::size_t dash = dashLine(start, least);
        if (dash == source.size()) {
            return false;
        }
        dashes.push_back(dash);
    }
    for (std::size_t i = 0; i < dashes.size(); ++i) {
        std::size_t first = dashes[i];
        const std::size_t least = i == 0 ? 0 : lineAfter(dashes[i - 1]);
        while (first > least && isComment(lineBefore(first))) {
            first = lineBefore(first);
        }
        items.push_back({first, 0});
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        const bool isLast = i + 1 == items.size();
        items[i].end = endOfItem(dashes[i], isLast ? limit : items[i + 1].begin);
    }
    return true;
}

// The last line with a dash from `least` to the line of `start`; the end of the text: none.
std::size_t BlockRow::dashLine(std::size_t start, std::size_t least) const
{
    std::size_t line = lineOf(std::min(start, source.size() - 1));
    while (line > least && !isDash(line)) {
        line = lineBefore(line);
    }
    return line >= least && isDash(line) ? line : source.size();
}

// After the last line that is neither blank nor a comment of the list.
std::size_t BlockRow::endOfItem(std::size_t dash, std::size_t last) const
{
    std::size_t end = lineAfter(dash);
    for (std::size_t line = end; line < last; line = lineAfter(line)) {
        if (!isBlank(line) && !isComment(line)) {
            end = lineAfter(line);
        }
    }
    return end;
}

std::string BlockRow::with(std::size_t before, const std::string& lines) const
{
    const std::string blank = blankLine(before);
    std::string text = source;
    return text.insert(placeOf(before), before < items.size() ? lines + blank : blank + lines);
}

std::string BlockRow::without(std::size_t index) const
{
    const auto [first, last] = removal(index);
    return source.substr(0, first) + source.substr(last);
}

std::string BlockRow::moved(std::size_t index, std::size_t before) const
{
    const auto& [first, last] = items[index];
    const YamlExtent removed = removal(index);
    const std::size_t place = placeOf(before);
    std::string text = with(before, source.substr(first, last - first));
    const std::size_t shift = place <= removed.begin ? text.size() - source.size() : 0;
    return text.erase(removed.begin + shift, removed.end - removed.begin);
}

// Where an item goes that is put before item `before`.
std::size_t BlockRow::placeOf(std::size_t before) const
{
    return before < items.size() ? items[before].begin : items.back().end;
}

// The blank line between this item and its neighbour, if others have one.
std::string BlockRow::blankLine(std::size_t before) const
{
    const std::size_t neighbour = std::max<std::size_t>(1, std::min(before, items.size() - 1));
    const bool isSpaced = items.size() > 1 && items[neighbour].begin > 0 &&
                          isBlank(lineBefore(items[neighbour].begin));
    return isSpaced ? lineEndAfter(source, begin) : "";
}

// The lines of an item, and the blank lines that would be too many without them.
YamlExtent BlockRow::removal(std::size_t index) const
{
    const auto& [first, last] = items[index];
    const std::size_t blankEnd = afterBlankLines(last);
    const std::size_t blankBegin = beforeBlankLines(first);
    if (blankEnd > last && (blankBegin < first || index == 0)) {
        return {first, blankEnd};
    }
    return {blankEnd == source.size() ? blankBegin : first, last};
}

bool BlockRow::isDash(std::size_t lineStart) const
{
    const std::size_t dash = lineStart + column;
    const std::size_t first = source.find_first_not_of(' ', lineStart);
    return first == dash && source[dash] == '-' &&
           (dash + 1 == source.size() || source.find_first_of(" \t\r\n", dash) == dash + 1);
}

// Whether it is a comment that is not further to the right than the dashes.
bool BlockRow::isComment(std::size_t lineStart) const
{
    const std::size_t first = source.find_first_not_of(' ', lineStart);
    return first != std::string::npos && source[first] == '#' && first - lineStart <= column;
}

bool BlockRow::isBlank(std::size_t lineStart) const
{
    return afterBlanks(source, lineStart) == endOfLine(source, lineStart);
}

std::size_t BlockRow::lineAfter(std::size_t lineStart) const
{
    const std::size_t end = source.find('\n', lineStart);
    return end == std::string::npos ? source.size() : end + 1;
}

std::size_t BlockRow::lineBefore(std::size_t lineStart) const
{
    return lineStart < 2 ? 0 : source.rfind('\n', lineStart - 2) + 1;
}

std::size_t BlockRow::lineOf(std::size_t position) const
{
    return position == 0 ? 0 : source.rfind('\n', position - 1) + 1;
}

std::size_t BlockRow::afterBlankLines(std::size_t lineStart) const
{
    while (lineStart < source.size() && isBlank(lineStart)) {
        lineStart = lineAfter(lineStart);
    }
    return lineStart;
}

std::size_t BlockRow::beforeBlankLines(std::size_t lineStart) const
{
    while (lineStart > 0 && isBlank(lineBefore(lineStart))) {
        lineStart = lineBefore(lineStart);
    }
    return lineStart;
}

} // namespace mxstation
