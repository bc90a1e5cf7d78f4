#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// The content of a CSV text, in UTF-8.
struct CsvTable
{
    struct Row
    {
        std::size_t line; ///< Counted from 1.
        std::vector<std::string> cells;
    };

    std::vector<std::string> columns; ///< The cells of the first line, in lower case.
    std::vector<Row> rows;            ///< The other lines, each with one cell per column.

    /// Returns the position of the column `name`, or nothing.
    std::optional<std::size_t> column(const std::string& name) const;

    /// Returns the position of the column `name`. Throws a `Failure` naming `file` and its columns
    /// when there is none.
    std::size_t requiredColumn(const std::string& name, const std::string& file) const;
};

/// Reads CSV as written by `mxtool` or a spreadsheet. The separator is the first comma, semicolon
/// or tab of the first line; a byte order mark is optional; text that is not UTF-8 is read as
/// Windows-1252. Removes the apostrophe that guards a formula, and lines of empty cells. `file` is
/// the name for diagnostics. Throws a `Failure` naming the line.
CsvTable readCsv(const std::string& content, const std::string& file);

} // namespace mxmodule
