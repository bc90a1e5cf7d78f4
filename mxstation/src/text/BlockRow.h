#pragma once

#include "text/YamlExtent.h"

#include <string>
#include <vector>

namespace mxstation {

/// The items of a list of lines, each with its dash, as whole lines of a text.
///
/// The lines of an item begin with the comments directly above it. Comments that are further to the
/// right than its dash belong to the item above them. What else is between items, such as blank
/// lines, is part of no item.
class BlockRow
{
public:
    /// `text`, whose last line has a line end, and `list` of the map `root` outlive the object.
    BlockRow(const std::string& text, const YamlNode& root, const YamlNode& list);

    /// Returns whether the lines of every item are known. Nothing else is valid otherwise.
    bool isKnown() const { return known; }

    /// Returns the lines of the item `index`.
    const YamlExtent& item(std::size_t index) const { return items[index]; }

    /// Returns the blanks before the dashes.
    std::string indentation() const { return std::string(column, ' '); }

    /// Returns the text in which `lines` are an item before item `before`, or after the last one.
    std::string with(std::size_t before, const std::string& lines) const;

    /// Returns the text without item `index`, one of several, and without a blank line too many.
    std::string without(std::size_t index) const;

    /// Returns the text with item `index` before what is item `before` now, or after the last one.
    std::string moved(std::size_t index, std::size_t before) const;

private:
    YamlExtent removal(std::size_t index) const;
    std::string blankLine(std::size_t before) const;
    std::size_t placeOf(std::size_t before) const;
    bool isDash(std::size_t lineStart) const;
    bool isComment(std::size_t lineStart) const;
    bool isBlank(std::size_t lineStart) const;
    std::size_t lineAfter(std::size_t lineStart) const;
    std::size_t lineBefore(std::size_t lineStart) const;
    std::size_t lineOf(std::size_t position) const;
    std::size_t dashLine(std::size_t start, std::size_t least) const;
    std::size_t endOfItem(std::size_t dash, std::size_t last) const;
    std::size_t afterBlankLines(std::size_t lineStart) const;
    std::size_t beforeBlankLines(std::size_t lineStart) const;
    bool readItems(const YamlNode& list);

    const std::string& source;
    std::size_t column = 0; // of the dashes
    std::size_t begin = 0;  // of the line of the first item
    std::size_t limit = 0;  // the first line after the list
    std::vector<YamlExtent> items;
    bool known = false;
};

/// Returns where the document ends: at a line "...", or with the text.
std::size_t endOfDocument(const std::string& source);

} // namespace mxstation
