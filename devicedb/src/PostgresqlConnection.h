#pragma once

#include "PostgresqlAnswer.h"
#include "PostgresqlWords.h"
#include "SqlConnection.h"

namespace devices::database {

/// A connection to PostgreSQL, or to an engine with the same protocol. Uses plain SQL only, no
/// triggers and no procedural languages. Relies on no state of its session between transactions,
/// which a pooler does not keep: no prepared statements, no settings.
///
/// Uses libpq, not Poco's connector: version 1.11 of that frees the result of a statement twice
/// when a later execution of it fails, leaks the memory of a connection that failed or was lost,
/// and takes neither URLs nor values with blanks. Bytes are transferred in binary form both ways,
/// never in text form.
class PostgresqlConnection final : public SqlConnection
{
public:
    /// Connects for `access`. Waits up to `patience` seconds for other writers.
    PostgresqlConnection(PostgresqlWords connectionWords, Access access, unsigned patience);

    const SqlDialect& dialect() const override { return ownDialect; }
    void execute(const std::string& sql) override;
    std::size_t change(const std::string& sql,
                       const std::vector<SqlParameter>& parameters) override;
    void query(const std::string& sql, const std::vector<SqlParameter>& parameters,
               std::size_t columns, const std::function<void(const Row&)>& take) override;
    std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) override;
    bool connectAgain(const SqlFailure& failure, Access access) override;
    bool holdsTransaction() override;
    std::string whyTransactionIsLost() override;

private:
    void connect(Access access);

    PostgresqlWords words;
    PostgresqlHandle connection;
    SqlDialect ownDialect;
};

} // namespace devices::database
