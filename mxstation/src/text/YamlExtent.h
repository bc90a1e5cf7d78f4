#pragma once

#include "text/YamlTree.h"

#include <optional>
#include <string>

namespace mxstation {

/// Returns where `node` ends in `source`, after its last byte: of a scalar, or of a list or map in
/// brackets. Nothing for other values, and for a scalar without quotes that has several lines.
std::optional<std::size_t> endOfNode(const std::string& source, const YamlNode& node);

/// Returns the first byte of `node` in `source` after its tag and anchor.
std::size_t contentOfNode(const std::string& source, const YamlNode& node);

/// Returns where the line of `position` ends in `source`, before its line end.
std::size_t endOfLine(const std::string& source, std::size_t position);

/// Returns the line end after `position` in `source`; in a last line without one the first of
/// the text.
std::string lineEndAfter(const std::string& source, std::size_t position);

} // namespace mxstation
