#include "TextTable.h"

#include "ShownText.h"

#include <algorithm>

namespace mxtool {

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t widestColumn = 200; // what is wider pushes the rest of its own row alone

// The number of characters of a UTF-8 text: its bytes that do not continue one.
std::size_t width(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

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

std::string TextTable::text(unsigned indent) const
{
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], std::min(width(row[i]), widestColumn));
        }
    }
    std::string all;
    for (const auto& row : rows) {
        std::string line(indent, ' ');
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::size_t used = std::min(width(row[i]), widths[i]);
            line += row[i] + std::string(widths[i] - used + gap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        all += line + "\n";
    }
    return all;
}

} // namespace mxtool
