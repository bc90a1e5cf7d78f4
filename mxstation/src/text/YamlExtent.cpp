#include "text/YamlExtent.h"

#include <algorithm>

namespace mxstation {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The end of the quoted scalar whose quote is at `begin`.
std::optional<std::size_t> endOfQuotes(const std::string& source, std::size_t begin)
{
    const char quote = source[begin];
    for (std::size_t at = begin + 1; at < source.size(); ++at) {
        if (quote == '"' && source[at] == '\\') {
            ++at;
        } else if (source[at] == quote) {
            const bool isDoubled =
                quote == '\'' && at + 1 < source.size() && source[at + 1] == quote;
            if (!isDoubled) {
                return at + 1;
            }
            ++at;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> endOfScalar(const std::string& source, const YamlNode& node)
{
    const std::size_t begin = contentOfNode(source, node);
    if (begin < source.size() && (source[begin] == '"' || source[begin] == '\'')) {
        return endOfQuotes(source, begin);
    }
    return source.compare(begin, node.text.size(), node.text) == 0
               ? std::optional(begin + node.text.size())
               : std::nullopt;
}

// The end of the last value in the brackets; the opening bracket without values.
std::size_t endOfValues(const std::string& source, const YamlNode& node)
{
    std::size_t end = contentOfNode(source, node) + 1;
    const auto extend = [&](const YamlNode& value) {
        if (value.offset >= end) { // not an alias of a value before
            end = std::max(end, endOfNode(source, value).value_or(end));
        }
    };
    for (const YamlNodeP& item : node.items) {
        extend(*item);
    }
    for (const auto& [key, value] : node.members) {
        extend(*key);
        extend(*value);
    }
    return end;
}

std::optional<std::size_t> endOfBrackets(const std::string& source, const YamlNode& node)
{
    const std::string brackets = node.kind == YamlNode::Kind::Map ? "{}" : "[]";
    if (source[contentOfNode(source, node)] != brackets[0]) {
        return std::nullopt; // a pair in a list, without brackets
    }
    for (std::size_t at = endOfValues(source, node); at < source.size(); ++at) {
        if (source[at] == '#' && isBlank(source[at - 1])) {
            at = endOfLine(source, at);
        } else if (source[at] == brackets[1]) {
            return at + 1;
        }
    }
    return std::nullopt;
}

} // namespace

std::size_t contentOfNode(const std::string& source, const YamlNode& node)
{
    std::size_t at = node.offset;
    while (at < source.size() && (source[at] == '&' || source[at] == '!')) {
        at = std::min(source.find_first_of(" \t\r\n", at), source.size());
        at = std::min(source.find_first_not_of(" \t\r\n", at), source.size());
    }
    return at;
}

std::optional<std::size_t> endOfNode(const std::string& source, const YamlNode& node)
{
    if (node.kind == YamlNode::Kind::Scalar) {
        return endOfScalar(source, node);
    }
    return node.isFlow ? endOfBrackets(source, node) : std::nullopt;
}

std::optional<std::size_t> endOfUse(const std::string& source, const YamlNode& node,
                                    std::size_t start)
{
    if (start < source.size() && source[start] == '*') {
        return std::min(source.find_first_of(" \t\r\n,]}", start), source.size());
    }
    return start == node.offset ? endOfNode(source, node) : std::nullopt;
}

std::optional<std::size_t> endOfMember(const std::string& source, const YamlNode& map,
                                       std::size_t index)
{
    const auto& [key, value] = map.members[index];
    if (value->kind == YamlNode::Kind::Nothing) {
        const auto end = endOfNode(source, *key);
        const std::size_t colon = end ? afterBlanks(source, *end) : source.size();
        return colon < source.size() && source[colon] == ':' ? std::optional(colon + 1)
                                                             : std::nullopt;
    }
    const bool isLines = value->kind == YamlNode::Kind::Map && !value->isFlow &&
                         map.starts[index] == value->offset && !value->members.empty();
    return isLines ? endOfMember(source, *value, value->members.size() - 1)
                   : endOfUse(source, *value, map.starts[index]);
}

std::optional<std::vector<YamlExtent>> partsInBrackets(const std::string& source,
                                                       const YamlNode& node)
{
    std::vector<YamlExtent> parts;
    std::size_t last = contentOfNode(source, node) + 1;
    for (std::size_t i = 0; i < node.starts.size(); ++i) {
        const bool isList = node.kind == YamlNode::Kind::List;
        const std::size_t begin = isList ? node.starts[i] : node.members[i].first->offset;
        const auto end =
            isList ? endOfUse(source, *node.items[i], begin) : endOfMember(source, node, i);
        if (!end || begin < last || *end < begin) {
            return std::nullopt; // a key that is an alias is elsewhere
        }
        parts.push_back({begin, *end});
        last = *end;
    }
    return parts;
}

std::size_t afterBlanks(const std::string& source, std::size_t position)
{
    return std::min(source.find_first_not_of(" \t", position), source.size());
}

std::size_t endOfLine(const std::string& source, std::size_t position)
{
    const std::size_t end = std::min(source.find('\n', position), source.size());
    return end > position && end < source.size() && source[end - 1] == '\r' ? end - 1 : end;
}

std::string lineEndAfter(const std::string& source, std::size_t position)
{
    std::size_t end = source.find('\n', position);
    if (end == std::string::npos) {
        end = source.find('\n');
    }
    return end != std::string::npos && end > 0 && source[end - 1] == '\r' ? "\r\n" : "\n";
}

} // namespace mxstation
