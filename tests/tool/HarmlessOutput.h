#pragma once

#include <set>
#include <string>
#include <vector>

namespace tooltest {

/// Expects that `text` is UTF-8 and that nothing in it controls a terminal or reverses a line.
void expectHarmless(const std::string& text);

using Rows = std::vector<std::vector<std::string>>;

/// Returns the rows of a CSV text, read strictly: every line ends with CR LF, quotes are only
/// around a cell.
Rows csvRows(const std::string& csv);

/// Expects that `csv` is harmless, that its rows have equally many cells and that no cell begins a
/// formula.
void expectHarmlessCsv(const std::string& csv);

/// Returns the names of all elements of a page or picture.
std::set<std::string> elementsOf(const std::string& markup);

} // namespace tooltest
