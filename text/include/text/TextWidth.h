#pragma once

#include <cstddef>
#include <string>

namespace text {

/// Returns how many columns a terminal or a monospaced font takes for `text` (UTF-8 without control
/// characters).
std::size_t columnsOf(const std::string& text);

/// Returns `text`, cut to at most `columns` columns; an ellipsis replaces the rest.
std::string shortened(const std::string& text, std::size_t columns);

/// Returns `name`, cut like that, but with the number at its end, which distinguishes the channels
/// of a module.
std::string shortenedName(const std::string& name, std::size_t columns);

/// Returns `text`, shortened or filled up with blanks to exactly `columns` columns.
std::string fitted(const std::string& text, std::size_t columns);

/// Returns the bytes of an mx text as a label of one line: UTF-8 of at most 100 columns with
/// control characters and direction marks made visible.
std::string labelOf(const std::string& bytes);

} // namespace text
