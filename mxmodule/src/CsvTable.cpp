#include "CsvTable.h"

#include <mxmodule/Finding.h>
#include <text/Csv.h>

#include <Poco/String.h>

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/Utf8.h>

#include <algorithm>
#include <set>

namespace mxmodule {

namespace {

[[noreturn]] void failAt(const std::string& file, std::size_t line, const std::string& text,
                         const std::string& hint = {})
{
    throw Failure(Origin::Input, fmt::format("{}:{}", file, line), text, hint);
}

char separatorOf(const std::string& content)
{
    const std::string firstLine = content.substr(0, content.find('\n'));
    const std::size_t at = firstLine.find_first_of(",;\t");
    return at == std::string::npos ? ',' : firstLine[at];
}

class CsvReader
{
public:
    CsvReader(const std::string& csv, const std::string& file)
        : content(csv), name(file), separator(separatorOf(csv))
    {}

    bool atEnd() const { return at >= content.size(); }

    CsvTable::Row row()
    {
        CsvTable::Row read{line, {cell()}};
        while (!atEnd() && content[at] == separator) {
            ++at;
            read.cells.push_back(cell());
        }
        skipLineEnd();
        return read;
    }

private:
    std::string cell()
    {
        const bool isQuoted = !atEnd() && content[at] == '"';
        return text::unguarded(text::toUtf8(isQuoted ? quoted() : plain()));
    }

    std::string plain()
    {
        const std::size_t end =
            std::min(content.find_first_of(std::string("\r\n") + separator, at), content.size());
        std::string text = content.substr(at, end - at);
        at = end;
        return text;
    }

    std::string quoted()
    {
        const std::size_t firstLine = line;
        std::string text;
        for (++at; !atEnd(); ++at) {
            if (content[at] == '"' && content.compare(at, 2, "\"\"") != 0) {
                ++at;
                requireEndOfCell();
                return text;
            }
            at += content[at] == '"' ? 1 : 0;
            line += content[at] == '\n' ? 1 : 0;
            text += content[at];
        }
        failAt(name, firstLine, "A quoted cell has no closing \"");
    }

    void requireEndOfCell() const
    {
        if (!atEnd() && content[at] != separator && content[at] != '\r' && content[at] != '\n') {
            failAt(name, line,
                   fmt::format(
                       "Found \"{}\" after the closing \" of a cell, expected the end of "
                       "the cell",
                       text::beginningOf(content.substr(at, content.find('\n', at) - at), 20)));
        }
    }

    void skipLineEnd()
    {
        at += !atEnd() && content[at] == '\r' ? 1 : 0;
        at += !atEnd() && content[at] == '\n' ? 1 : 0;
        ++line;
    }

    const std::string& content;
    const std::string& name;
    char separator;
    std::size_t at = 0;
    std::size_t line = 1;
};

std::string withoutByteOrderMark(const std::string& content)
{
    const std::string mark = "\xEF\xBB\xBF";
    return content.compare(0, mark.size(), mark) == 0 ? content.substr(mark.size()) : content;
}

std::vector<std::string> columnNames(std::vector<std::string> cells)
{
    for (std::string& name : cells) {
        name.erase(0, name.find_first_not_of(' '));
        name.erase(name.find_last_not_of(' ') + 1);
        Poco::toLowerInPlace(name);
    }
    return cells;
}

bool isBlank(const std::vector<std::string>& cells)
{
    return std::all_of(cells.begin(), cells.end(),
                       [](const std::string& cell) { return cell.empty(); });
}

// Every row has a cell for each column, so that a short text could need much memory.
constexpr std::size_t mostColumns = 100;
constexpr std::size_t mostRows = 65536; // number of registers that Modbus can address

void requireAtMost(std::size_t most, std::size_t found, const char* what, const std::string& file,
                   std::size_t line)
{
    if (found > most) {
        failAt(file, line, fmt::format("Found {} {}, expected at most {}", found, what, most));
    }
}

// Columns without a name are not read.
void requireUniqueNames(const std::vector<std::string>& names, const std::string& file)
{
    std::set<std::string> seen;
    for (const std::string& name : names) {
        if (!name.empty() && !seen.insert(name).second) {
            failAt(file, 1,
                   fmt::format("Found two columns \"{}\", expected one", text::abbreviated(name)));
        }
    }
}

} // namespace

std::optional<std::size_t> CsvTable::column(const std::string& name) const
{
    const auto found = std::find(columns.begin(), columns.end(), name);
    return found == columns.end()
               ? std::nullopt
               : std::optional<std::size_t>(static_cast<std::size_t>(found - columns.begin()));
}

std::size_t CsvTable::requiredColumn(const std::string& name, const std::string& file) const
{
    const auto found = column(name);
    if (!found) {
        failAt(file, 1,
               fmt::format("Found the columns \"{}\", expected one called \"{}\"",
                           text::abbreviated(fmt::format("{}", fmt::join(columns, "\", \""))),
                           name));
    }
    return *found;
}

CsvTable readCsv(const std::string& content, const std::string& file)
{
    const std::string text = withoutByteOrderMark(content);
    CsvReader reader(text, file);
    CsvTable table;
    if (!reader.atEnd()) {
        table.columns = columnNames(reader.row().cells);
        requireAtMost(mostColumns, table.columns.size(), "columns", file, 1);
        requireUniqueNames(table.columns, file);
    }
    while (!reader.atEnd()) {
        CsvTable::Row row = reader.row();
        if (isBlank(row.cells)) {
            continue;
        }
        requireAtMost(mostRows, table.rows.size() + 1, "rows", file, row.line);
        if (row.cells.size() > table.columns.size()) {
            failAt(file, row.line,
                   fmt::format("Found {} cells, expected the {} that the first line names",
                               row.cells.size(), table.columns.size()),
                   separatorOf(text) == ',' ? "numbers have a decimal point: 9.5, not 9,5; a "
                                              "cell that holds a comma is in quotes"
                                            : "");
        }
        row.cells.resize(table.columns.size());
        table.rows.push_back(std::move(row));
    }
    return table;
}

} // namespace mxmodule
