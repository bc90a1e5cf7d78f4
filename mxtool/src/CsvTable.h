#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// What a CSV text says. Texts are UTF-8.
struct CsvTable
{
    struct Row
    {
        std::size_t line; ///< Counted from 1.
        std::vector<std::string> cells;
    };

    std::vector<std::string> columns; ///< Names of the first line, in lower case.
    std::vector<Row> rows;            ///< The others, each with a cell for every column.

    /// Returns the position of the column called `name`; nothing when there is none.
    std::optional<std::size_t> column(const std::string& name) const;

    /// Returns the position of the column called `name`. Throws a `Failure` naming `file` and its
    /// columns.
    std::size_t requiredColumn(const std::string& name, const std::string& file) const;
};

/// Reads a CSV text that `mxtool` or a spreadsheet has written: separated by the first comma,
/// semicolon or tab of its first line, with or without a byte order mark; what is no UTF-8 is read
/// as Windows-1252. An apostrophe that keeps a cell from being a formula is taken off, lines of
/// empty cells are left out. `file` is the name for diagnostics. Throws a `Failure` naming the
/// line.
CsvTable readCsv(const std::string& content, const std::string& file);

} // namespace mxtool
