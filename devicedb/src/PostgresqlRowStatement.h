#pragma once

#include "RowStatement.h"

#include <libpq-fe.h>

#include <map>

namespace devices::database {

/// Rows of PostgreSQL: many in one statement, since each execution is a round trip over the
/// connection. There is one prepared statement per number of rows.
class PostgresqlRowStatement final : public RowStatement
{
public:
    PostgresqlRowStatement(PGconn* openConnection, RowSql sql);
    ~PostgresqlRowStatement() override;

    void execute(const std::vector<Row>& rows) override;

private:
    const std::string& preparedFor(std::size_t rows);
    void executeSome(const std::vector<Row>& rows, std::size_t first, std::size_t count);

    PGconn* connection;
    RowSql rowSql;
    std::map<std::size_t, std::string> names; // of the prepared statements
};

} // namespace devices::database
