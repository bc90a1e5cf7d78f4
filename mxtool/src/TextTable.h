#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// A table for people: a heading per column, columns aligned, two blanks between them.
class TextTable
{
public:
    explicit TextTable(std::vector<std::string> headings);

    /// Appends a row; texts may hold any byte and are shown as `forTerminal` shows them.
    void add(std::vector<std::string> row);

    bool empty() const { return rows.size() == 1; } ///< Whether there is no row but the headings.

    /// Returns the lines, each behind `indent` blanks and without blanks at its end.
    std::string text(unsigned indent = 0) const;

private:
    std::vector<std::vector<std::string>> rows; // the first holds the headings
};

} // namespace mxtool
