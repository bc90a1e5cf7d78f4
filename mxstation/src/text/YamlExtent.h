#pragma once

#include "text/YamlTree.h"

#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// Returns where `node` ends in `source`, after its last byte: of a scalar, or of a list or map in
/// brackets. Nothing for other values, and for a scalar without quotes that has several lines.
std::optional<std::size_t> endOfNode(const std::string& source, const YamlNode& node);

/// A part of a text, from its first byte to the byte after its last.
struct YamlExtent
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Returns where the use of `node` ends that begins at `start`: `node` itself, or an alias of it.
/// Nothing as for `endOfNode`.
std::optional<std::size_t> endOfUse(const std::string& source, const YamlNode& node,
                                    std::size_t start);

/// Returns where the value of the member `index` of `map` ends; of a map of lines, that of its last
/// value, and of no value the colon. Nothing as for `endOfNode`.
std::optional<std::size_t> endOfMember(const std::string& source, const YamlNode& map,
                                       std::size_t index);

/// Returns the items, or keys with values, of `node`, a list or map in brackets; nothing if one of
/// them has no known end.
std::optional<std::vector<YamlExtent>> partsInBrackets(const std::string& source,
                                                       const YamlNode& node);

/// Returns the first byte from `position` on that is no blank; line ends are none.
std::size_t afterBlanks(const std::string& source, std::size_t position);

/// Returns the first byte of `node` in `source` after its tag and anchor.
std::size_t contentOfNode(const std::string& source, const YamlNode& node);

/// Returns where the line of `position` ends in `source`, before its line end.
std::size_t endOfLine(const std::string& source, std::size_t position);

/// Returns the line end after `position` in `source`; in a last line without one the first of
/// the text.
std::string lineEndAfter(const std::string& source, std::size_t position);

} // namespace mxstation
