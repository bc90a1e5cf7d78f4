#include "text/Csv.h"

#include <Poco/String.h>

#include <text/ShownText.h>

#include <algorithm>
#include <array>

namespace text {

namespace {

template <std::size_t count>
bool beginsWithOneOf(const std::string& cell, const std::array<const char*, count>& starts)
{
    return std::any_of(starts.begin(), starts.end(),
                       [&cell](const char* start) { return cell.rfind(start, 0) == 0; });
}

bool holdsOperator(const std::string& cell)
{
    // Full-width forms too: spreadsheets accept them in some languages.
    constexpr std::array<const char*, 10> operators = {
        "=", "(", "!", "|", "@", "\uFF1D", "\uFF08", "\uFF01", "\uFF5C", "\uFF20"};
    return std::any_of(operators.begin(), operators.end(),
                       [&cell](const char* one) { return cell.find(one, 1) != std::string::npos; });
}

// Whether the cell is a formula, after leading apostrophes.
bool holdsFormula(const std::string& cell)
{
    return looksLikeFormula(cell.substr(std::min(cell.find_first_not_of('\''), cell.size())));
}

std::string csvCell(const std::string& bytes, char separator)
{
    std::string cell = guarded(text::forTerminal(bytes));
    if (cell.find(separator) == std::string::npos && cell.find('"') == std::string::npos) {
        return cell;
    }
    return "\"" + Poco::replace(cell, "\"", "\"\"") + "\"";
}

} // namespace

bool looksLikeFormula(const std::string& cell)
{
    constexpr std::array<const char*, 6> always = {"=", "@", "\t", "\r", "\uFF1D", "\uFF20"};
    constexpr std::array<const char*, 4> signs = {"+", "-", "\uFF0B", "\uFF0D"};
    return beginsWithOneOf(cell, always) || (beginsWithOneOf(cell, signs) && holdsOperator(cell));
}

std::string guarded(const std::string& cell)
{
    return holdsFormula(cell) ? "'" + cell : cell;
}

std::string unguarded(const std::string& cell)
{
    return !cell.empty() && cell[0] == '\'' && holdsFormula(cell) ? cell.substr(1) : cell;
}

void append(const CsvRow& cells, CsvRow& row)
{
    row.insert(row.end(), cells.begin(), cells.end());
}

std::string csvLine(const CsvRow& cells, char separator)
{
    std::string line;
    for (const std::string& cell : cells) {
        if (&cell != &cells.front()) {
            line += separator;
        }
        line += csvCell(cell, separator);
    }
    return line + "\r\n";
}

std::string csvText(const std::vector<CsvRow>& rows, char separator, bool byteOrderMark)
{
    std::string text = byteOrderMark ? "\xEF\xBB\xBF" : "";
    for (const CsvRow& row : rows) {
        text += csvLine(row, separator);
    }
    return text;
}

} // namespace text
