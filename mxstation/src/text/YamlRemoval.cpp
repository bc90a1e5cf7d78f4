#include "text/YamlRemoval.h"

#include <algorithm>

namespace mxstation {

namespace {

// Adds the keys and values that are between `begin` and `end` to `scalars`.
void addScalars(const std::string& source, const YamlNode& node, std::size_t start,
                std::vector<YamlExtent>& scalars)
{
    if (node.kind == YamlNode::Kind::Scalar || start != node.offset) {
        scalars.push_back({start, endOfUse(source, node, start).value_or(start)});
        return;
    }
    for (std::size_t i = 0; i < node.starts.size(); ++i) {
        if (node.kind == YamlNode::Kind::Map) {
            const YamlNode& key = *node.members[i].first;
            scalars.push_back({key.offset, endOfNode(source, key).value_or(key.offset)});
        }
        addScalars(source,
                   node.kind == YamlNode::Kind::Map ? *node.members[i].second : *node.items[i],
                   node.starts[i], scalars);
    }
}

// The comments from `begin` on, where there is no scalar until `end`.
void addComments(const std::string& source, std::size_t begin, std::size_t end,
                 std::vector<std::string>& comments)
{
    for (std::size_t at = begin; at < end; ++at) {
        if (source[at] == '#' && (at == 0 || source.find_first_of(" \t\r\n", at - 1) == at - 1)) {
            const std::size_t last = endOfLine(source, at);
            comments.push_back(source.substr(at, last - at));
            at = last;
        }
    }
}

// The comments in the member from `begin` to `end`, and the one after it in the line.
std::vector<std::string> commentsIn(const std::string& source, const YamlNode& map,
                                    std::size_t index, const YamlExtent& member)
{
    std::vector<YamlExtent> scalars{{member.begin, member.begin}};
    const auto& [key, value] = map.members[index];
    scalars.push_back({key->offset, endOfNode(source, *key).value_or(key->offset)});
    addScalars(source, *value, map.starts[index], scalars);
    std::vector<std::string> comments;
    for (std::size_t i = 0; i < scalars.size(); ++i) {
        const bool isLast = i + 1 == scalars.size();
        addComments(source, scalars[i].end,
                    isLast ? endOfLine(source, std::max(member.end, scalars[i].end))
                           : scalars[i + 1].begin,
                    comments);
    }
    return comments;
}

// The comma from `begin` on that is in no comment, where only blanks and comments are until `end`.
std::size_t commaBetween(const std::string& source, std::size_t begin, std::size_t end)
{
    for (std::size_t at = begin; at < end; ++at) {
        if (source[at] == ',') {
            return at;
        }
        at = source[at] == '#' ? endOfLine(source, at) : at;
    }
    return source.size();
}

// With `newline` between them.
std::string joinedLines(const std::vector<std::string>& lines, const std::string& newline)
{
    std::string all;
    for (const std::string& line : lines) {
        all += (all.empty() ? "" : newline) + line;
    }
    return all;
}

// The whole line, with the line end of the text before it where it has none of its own.
void removeLines(YamlEdit& edit, const std::string& source, std::size_t begin, std::size_t end)
{
    const std::size_t next = source.find('\n', end);
    if (next != std::string::npos) {
        edit.replace(begin, next + 1, "");
        return;
    }
    const bool isFirst = begin == 0;
    const std::size_t lineEnd = lineEndAfter(source, begin).size();
    edit.replace(isFirst ? 0 : begin - std::min(begin, lineEnd), source.size(), "");
}

} // namespace

void removePart(YamlEdit& edit, const std::string& source, const std::vector<YamlExtent>& parts,
                std::size_t index)
{
    const YamlExtent& part = parts[index];
    const bool isLast = index + 1 == parts.size();
    const bool isOnly = parts.size() == 1;
    const std::size_t begin = isLast && !isOnly ? parts[index - 1].end : part.end;
    const std::size_t end = isOnly   ? source.find_first_not_of(", \t\r\n", begin)
                            : isLast ? part.begin
                                     : parts[index + 1].begin;
    const bool isCommented = source.substr(begin, end - begin).find('#') != std::string::npos;
    if (isOnly || isCommented) {
        edit.replace(part.begin, part.end, "");
        const std::size_t comma = commaBetween(source, begin, std::min(end, source.size()));
        if (comma < source.size()) {
            edit.replace(comma, comma + 1, "");
        }
    } else {
        edit.replace(isLast ? begin : part.begin, isLast ? part.end : end, "");
    }
}

bool removeMember(YamlEdit& edit, const std::string& source, const YamlNode& map, std::size_t index)
{
    const YamlNode& key = *map.members[index].first;
    const auto end = endOfMember(source, map, index);
    if (!end || *end < key.offset) {
        return false;
    }
    const YamlExtent member{key.offset, *end};
    if (map.isFlow) {
        const auto parts = partsInBrackets(source, map);
        if (parts) {
            removePart(edit, source, *parts, index);
        }
        return parts.has_value();
    }
    const auto comments = commentsIn(source, map, index, member);
    const std::string indent(key.offset - key.place.lineStart, ' ');
    const bool isLine = source.substr(key.place.lineStart, indent.size()) == indent;
    const std::size_t lineEnd = endOfLine(source, member.end);
    const std::size_t next =
        index + 1 < map.members.size() ? map.members[index + 1].first->offset : member.end;
    const bool isNextLine = next > lineEnd && source.substr(lineEnd, next - lineEnd) ==
                                                  lineEndAfter(source, member.end) + indent;
    if (isLine && comments.empty()) {
        removeLines(edit, source, key.place.lineStart, lineEnd);
    } else if (!isLine && comments.empty() && isNextLine) {
        edit.replace(member.begin, next, "");
    } else {
        edit.replace(member.begin, lineEnd,
                     joinedLines(comments, lineEndAfter(source, member.end) + indent));
    }
    return isLine || map.members.size() > 1;
}

} // namespace mxstation
