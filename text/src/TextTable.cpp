#include "text/TextTable.h"

#include "text/ShownText.h"
#include "text/Utf8.h"

#include <algorithm>

namespace text {

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t widestColumn = 200; // wider cells shift only their own row

} // namespace

TextTable::TextTable(std::vector<std::string> headings)
{
    add(std::move(headings));
}

void TextTable::add(std::vector<std::string> row)
{
    std::transform(row.begin(), row.end(), row.begin(), forTerminal);
    rows.push_back(std::move(row));
}

std::string TextTable::text() const
{
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], std::min(characterCount(row[i]), widestColumn));
        }
    }
    std::string all;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::size_t used = std::min(characterCount(row[i]), widths[i]);
            line += row[i] + std::string(widths[i] - used + gap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        all += line + "\n";
    }
    return all;
}

} // namespace text
