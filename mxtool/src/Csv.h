#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// How the cells of a CSV text are separated and whether it says that it is UTF-8.
struct CsvStyle
{
    char separator = ',';
    bool byteOrderMark = false; ///< Spreadsheets take a text without one for their own code page.
};

using CsvRow = std::vector<std::string>;

/// Adds `cells` at the end of `row`.
void append(const CsvRow& cells, CsvRow& row);

/// Returns one CSV line: cells quoted where they hold the separator or a quote, ended by CR LF.
/// Texts may hold any byte and come out as UTF-8, control characters as \xNN; one that a
/// spreadsheet would take for a formula gets an apostrophe in front.
std::string csvLine(const CsvRow& cells, char separator = ',');

/// Returns the lines of `rows`, of which the first names the columns.
std::string csvText(const std::vector<CsvRow>& rows, const CsvStyle& style);

/// Whether a spreadsheet would take the cell `cell` (UTF-8) for a formula: it begins with "=", "@",
/// tab or carriage return, or with "+" or "-" and has one of = ( ! | @ after it. A number, a name
/// such as "-Temp" or a value such as "-9.5 V" is none.
bool looksLikeFormula(const std::string& cell);

/// Returns `cell` (UTF-8) with an apostrophe in front where it is a formula, or one after
/// apostrophes: each such text gets one more, so that `unguarded` gives back any text.
std::string guarded(const std::string& cell);

/// Returns the text of which `cell` is the guarded one.
std::string unguarded(const std::string& cell);

} // namespace mxtool
