#include "PostgresqlRowStatement.h"

#include "PostgresqlAnswer.h"

#include <Poco/String.h>

#include <algorithm>

namespace devices::database {

namespace {

constexpr std::size_t mostRows = 64;

std::string sqlOf(const RowSql& rowSql, std::size_t rows)
{
    std::string sql = rowSql.head;
    std::size_t number = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string values;
        for (const RowSql::Value& value : rowSql.values) {
            values += (values.empty() ? "" : ", ") +
                      Poco::replace(value.sql, std::string("?"), "$" + std::to_string(++number));
        }
        sql += (row == 0 ? "(" : ", (") + values + ")";
    }
    return sql + rowSql.tail;
}

// A unique name for each statement of the process.
std::string newName()
{
    static unsigned long count = 0;
    return "device_database_" + std::to_string(++count);
}

} // namespace

PostgresqlRowStatement::PostgresqlRowStatement(PGconn* openConnection, RowSql sql)
    : connection(openConnection), rowSql(std::move(sql))
{}

PostgresqlRowStatement::~PostgresqlRowStatement()
{
    for (const auto& statement : names) {
        PQclear(PQexec(connection, ("DEALLOCATE " + statement.second).c_str()));
    }
}

const std::string& PostgresqlRowStatement::preparedFor(std::size_t rows)
{
    const auto known = names.find(rows);
    if (known != names.end()) {
        return known->second;
    }
    const std::string name = newName();
    checkedAnswer(connection,
                  PQprepare(connection, name.c_str(), sqlOf(rowSql, rows).c_str(), 0, nullptr));
    return names[rows] = name;
}

void PostgresqlRowStatement::executeSome(const std::vector<Row>& rows, std::size_t first,
                                         std::size_t count)
{
    std::vector<const char*> cells;
    std::vector<int> lengths;
    std::vector<int> formats; // 0: text, 1: binary
    for (std::size_t row = first; row < first + count; ++row) {
        for (std::size_t column = 0; column < rowSql.values.size(); ++column) {
            cells.push_back(rows[row][column].data());
            lengths.push_back(static_cast<int>(rows[row][column].size()));
            formats.push_back(rowSql.values[column].isBytes ? 1 : 0);
        }
    }
    const std::string& name = preparedFor(count);
    checkedAnswer(connection,
                  PQexecPrepared(connection, name.c_str(), static_cast<int>(cells.size()),
                                 cells.data(), lengths.data(), formats.data(), 0));
}

void PostgresqlRowStatement::execute(const std::vector<Row>& rows)
{
    for (std::size_t first = 0; first < rows.size(); first += mostRows) {
        executeSome(rows, first, std::min(mostRows, rows.size() - first));
    }
}

} // namespace devices::database
