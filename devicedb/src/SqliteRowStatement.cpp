#include "SqliteRowStatement.h"

#include "SqlConnection.h"

namespace devices::database {

namespace {

std::string sqlOfOneRow(const RowSql& rowSql)
{
    std::string values;
    for (const RowSql::Value& value : rowSql.values) {
        values += (values.empty() ? "" : ", ") + value.sql;
    }
    return rowSql.values.empty() ? rowSql.head : rowSql.head + "(" + values + ")" + rowSql.tail;
}

} // namespace

SqliteRowStatement::SqliteRowStatement(sqlite3* connection, const RowSql& rowSql)
    : statement(connection, sqlOfOneRow(rowSql))
{
    for (const RowSql::Value& value : rowSql.values) {
        isBytes.push_back(value.isBytes);
    }
}

void SqliteRowStatement::execute(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < isBytes.size(); ++column) {
            statement.bind(static_cast<int>(column) + 1, row[column], isBytes[column]);
        }
        statement.step();
    }
    statement.unbind(); // frees the rows
}

} // namespace devices::database
