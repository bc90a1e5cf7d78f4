#pragma once

#include <string>
#include <vector>

namespace text {

/// A text table: a heading per column, aligned columns, two blanks between them.
class TextTable
{
public:
    explicit TextTable(std::vector<std::string> headings);

    /// Appends a row; cells may contain any byte and are shown by `forTerminal`.
    void add(std::vector<std::string> row);

    bool empty() const { return rows.size() == 1; } ///< Whether there are only headings.

    /// Returns the lines, without trailing blanks.
    std::string text() const;

private:
    std::vector<std::vector<std::string>> rows; // the first holds the headings
};

} // namespace text
