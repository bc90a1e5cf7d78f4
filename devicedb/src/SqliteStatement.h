#pragma once

#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace devices::database {

/// One prepared statement of SQLite. Failures are a `SqlFailure` with SQLite's own reason.
class SqliteStatement
{
public:
    /// `openConnection` must outlive the object.
    SqliteStatement(sqlite3* openConnection, const std::string& sql);

    /// Binds parameter `number`, from 1, for the next steps; `value` must outlive them.
    void bind(int number, const std::string& value, bool isBytes);

    /// Returns the text of the placeholder of parameter `number`, such as "$1".
    std::string placeholder(int number) const;

    /// Unbinds all values.
    void unbind();

    /// Steps to the next row. Returns false after the last one; the next step starts again.
    bool step();

    /// Returns column `column`, from 0, of the row: bytes and texts as they are, numbers
    /// in decimal.
    std::string cell(int column) const;

private:
    sqlite3* connection;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement;
};

/// Throws SQLite's message about the last call on `connection` unless `result` is success.
void checkSqlite(sqlite3* connection, int result);

} // namespace devices::database
