#pragma once

#include "RowStatement.h"

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace devices::database {

/// Rows of SQLite, one step each, which is what SQLite is fast at.
///
/// This goes to SQLite itself, on the connection that Poco Data holds: the driver's statement costs
/// several times the step, for each of the dozens of rows of a module.
class SqliteRowStatement final : public RowStatement
{
public:
    /// `openConnection` must outlive the object.
    SqliteRowStatement(sqlite3* openConnection, const RowSql& rowSql);

    void execute(const std::vector<Row>& rows) override;

private:
    void executeOne(const Row& row);

    sqlite3* connection;
    std::vector<bool> isBytes; // of each column
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement;
};

/// Runs `sql`, which has no parameters and whose results nobody wants. Throws a `SqlFailure`.
void executeSqlite(sqlite3* connection, const std::string& sql);

} // namespace devices::database
