#pragma once

#include "text/YamlExtent.h"

#include <string>
#include <vector>

namespace mxstation {

/// The items of a list in brackets. Comments between them stay where they are.
class FlowRow
{
public:
    /// `text` and `list` outlive the object.
    FlowRow(const std::string& text, const YamlNode& list);

    /// Returns whether the place of every item is known. Nothing else is valid otherwise.
    bool isKnown() const { return parts.has_value(); }

    /// Returns where the item `index` is.
    const YamlExtent& item(std::size_t index) const { return (*parts)[index]; }

    /// Returns the text with `item` before item `before`, or after the last one.
    std::string with(std::size_t before, const std::string& item) const;

    /// Returns the text without item `index`.
    std::string without(std::size_t index) const;

    /// Returns the text with item `index` before what is item `before` now, or after the last one.
    std::string moved(std::size_t index, std::size_t before) const;

private:
    std::string separator(std::size_t start) const;

    const std::string& source;
    std::size_t opened; // after the bracket
    std::optional<std::vector<YamlExtent>> parts;
};

} // namespace mxstation
