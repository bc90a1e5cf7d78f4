#include "SqliteStatement.h"

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
    case SQLITE_INTERNAL:
    case SQLITE_IOERR:
    case SQLITE_LOCKED:
    case SQLITE_NOMEM:
    case SQLITE_NOTADB:
    case SQLITE_PERM:
    case SQLITE_PROTOCOL:
        return SqlFailure::Concern::Database;
    case SQLITE_READONLY:
        return SqlFailure::Concern::Change;
    default:
        return SqlFailure::Concern::Statement;
    }
}

} // namespace

SqliteStatement::SqliteStatement(sqlite3* openConnection, const std::string& sql)
    : connection(openConnection), statement(nullptr, &sqlite3_finalize)
{
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v3(connection, sql.c_str(), static_cast<int>(sql.size()),
                                          SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    statement.reset(prepared);
    checkSqlite(connection, result);
}

void SqliteStatement::bind(int number, const std::string& value, bool isBytes)
{
    const auto size = static_cast<sqlite3_uint64>(value.size());
    checkSqlite(connection,
                isBytes ? sqlite3_bind_blob64(statement.get(), number, value.data(), size, nullptr)
                        : sqlite3_bind_text64(statement.get(), number, value.data(), size, nullptr,
                                              SQLITE_UTF8));
}

std::string SqliteStatement::placeholder(int number) const
{
    const char* const name = sqlite3_bind_parameter_name(statement.get(), number);
    return name == nullptr ? "" : name;
}

void SqliteStatement::unbind()
{
    sqlite3_clear_bindings(statement.get());
}

bool SqliteStatement::step()
{
    const int result = sqlite3_step(statement.get());
    if (result == SQLITE_ROW) {
        return true;
    }
    const std::string reason = result == SQLITE_DONE ? "" : sqlite3_errmsg(connection);
    sqlite3_reset(statement.get());
    if (result != SQLITE_DONE) {
        throw SqlFailure(reason, concernOf(result));
    }
    return false;
}

// As a blob each type is read as its bytes, and no text ends at a NUL.
std::string SqliteStatement::cell(int column) const
{
    const void* const bytes = sqlite3_column_blob(statement.get(), column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column));
    return size == 0 ? "" : std::string(static_cast<const char*>(bytes), size);
}

void checkSqlite(sqlite3* connection, int result)
{
    if (result != SQLITE_OK) {
        throw SqlFailure(sqlite3_errmsg(connection), concernOf(result));
    }
}

} // namespace devices::database
