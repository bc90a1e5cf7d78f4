#pragma once

#include <string>
#include <vector>

namespace text {

using CsvRow = std::vector<std::string>;

/// Adds `cells` at the end of `row`.
void append(const CsvRow& cells, CsvRow& row);

/// Returns one CSV line, ended by CR LF: cells are quoted where they contain the separator or a
/// quote. Cells may contain any byte and are written as UTF-8, control characters as \xNN; a cell
/// that a spreadsheet would take for a formula is prefixed with an apostrophe.
std::string csvLine(const CsvRow& cells, char separator = ',');

/// Returns the lines of `rows`; the first row names the columns. Without a byte order mark
/// spreadsheets assume their own code page.
std::string csvText(const std::vector<CsvRow>& rows, char separator = ',',
                    bool byteOrderMark = false);

/// Whether a spreadsheet would take `cell` (UTF-8) for a formula: it begins with "=", "@", tab or
/// carriage return, or it begins with "+" or "-" and contains one of = ( ! | @ after that. Numbers,
/// names such as "-Temp" and values such as "-9.5 V" are not formulas.
bool looksLikeFormula(const std::string& cell);

/// Returns `cell` (UTF-8), prefixed with an apostrophe if it is a formula or apostrophes followed
/// by a formula. `unguarded` reverses this for any text.
std::string guarded(const std::string& cell);

/// Reverses `guarded`.
std::string unguarded(const std::string& cell);

} // namespace text
