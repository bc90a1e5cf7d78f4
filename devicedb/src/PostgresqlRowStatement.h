#pragma once

#include "PostgresqlAnswer.h"
#include "SqlConnection.h"

namespace devices::database {

/// Rows of PostgreSQL: all in one statement, one array for each column, since each execution is a
/// round trip over the connection. The server does not keep the statement: with a pooler, the next
/// transaction may use another connection.
class PostgresqlRowStatement final : public RowStatement
{
public:
    /// `openConnection` must outlive the object.
    PostgresqlRowStatement(const PostgresqlHandle& openConnection, const RowSql& rowSql);

    std::size_t execute(const std::vector<Row>& rows) override;
    void query(const std::vector<Row>& rows, std::size_t columns,
               const std::function<void(const Row&)>& take) override;

private:
    PostgresqlAnswer answerTo(const std::vector<Row>& rows) const;

    const PostgresqlHandle& connection;
    std::vector<CellType> types; ///< Of each column.
    std::string sql;
};

} // namespace devices::database
