#include "SqliteRowStatement.h"

#include "SqlConnection.h"

#include <sqlite3.h>

namespace devices::database {

namespace {

SqlFailure::Concern concernOf(int result)
{
    constexpr int primaryPart = 0xFF;
    switch (result & primaryPart) {
    case SQLITE_BUSY:
    case SQLITE_CANTOPEN:
    case SQLITE_CORRUPT:
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_LOCKED:
    case SQLITE_NOMEM:
    case SQLITE_NOTADB:
    case SQLITE_PERM:
    case SQLITE_PROTOCOL:
    case SQLITE_READONLY:
        return SqlFailure::Concern::Database;
    default:
        return SqlFailure::Concern::Statement;
    }
}

void check(sqlite3* connection, int result)
{
    if (result != SQLITE_OK && result != SQLITE_DONE && result != SQLITE_ROW) {
        throw SqlFailure(sqlite3_errmsg(connection), concernOf(result));
    }
}

std::string sqlOfOneRow(const RowSql& rowSql)
{
    std::string values;
    for (const RowSql::Value& value : rowSql.values) {
        values += (values.empty() ? "" : ", ") + value.sql;
    }
    return rowSql.values.empty() ? rowSql.head : rowSql.head + "(" + values + ")" + rowSql.tail;
}

} // namespace

SqliteRowStatement::SqliteRowStatement(sqlite3* openConnection, const RowSql& rowSql)
    : connection(openConnection), statement(nullptr, &sqlite3_finalize)
{
    for (const RowSql::Value& value : rowSql.values) {
        isBytes.push_back(value.isBytes);
    }
    const std::string sql = sqlOfOneRow(rowSql);
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v3(connection, sql.c_str(), static_cast<int>(sql.size()),
                                          SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    statement.reset(prepared);
    check(connection, result);
}

void SqliteRowStatement::executeOne(const Row& row)
{
    for (std::size_t column = 0; column < isBytes.size(); ++column) {
        const std::string& cell = row[column];
        const int number = static_cast<int>(column) + 1;
        const auto size = static_cast<sqlite3_uint64>(cell.size());
        check(connection,
              isBytes[column]
                  ? sqlite3_bind_blob64(statement.get(), number, cell.data(), size, nullptr)
                  : sqlite3_bind_text64(statement.get(), number, cell.data(), size, nullptr,
                                        SQLITE_UTF8));
    }
    const int result = sqlite3_step(statement.get());
    const std::string reason = result == SQLITE_DONE ? "" : sqlite3_errmsg(connection);
    sqlite3_reset(statement.get());
    if (result != SQLITE_DONE) {
        throw SqlFailure(reason, concernOf(result));
    }
}

void SqliteRowStatement::execute(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        executeOne(row); // bound by reference: `row` outlives the step
    }
    sqlite3_clear_bindings(statement.get());
}

void executeSqlite(sqlite3* connection, const std::string& sql)
{
    check(connection, sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr));
}

} // namespace devices::database
