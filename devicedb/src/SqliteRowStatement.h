#pragma once

#include "RowStatement.h"
#include "SqliteStatement.h"

namespace devices::database {

/// Rows of SQLite, one step each, which is fastest in SQLite.
class SqliteRowStatement final : public RowStatement
{
public:
    /// `connection` must outlive the object.
    SqliteRowStatement(sqlite3* connection, const RowSql& rowSql);

    void execute(const std::vector<Row>& rows) override;

private:
    std::vector<bool> isBytes; // of each column
    SqliteStatement statement;
};

} // namespace devices::database
