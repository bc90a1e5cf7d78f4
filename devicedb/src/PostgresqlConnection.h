#pragma once

#include "PostgresqlWords.h"
#include "SqlConnection.h"

namespace devices::database {

/// A connection to PostgreSQL, or to an engine that speaks its protocol: plain SQL alone, no
/// triggers and no languages of the server.
///
/// It goes through libpq and not through Poco's connector for it. Version 1.11 of that frees the
/// result of a statement twice when a later execution of it fails, keeps the memory of a connection
/// that failed or was lost, and takes neither URLs nor values with blanks. Bytes travel in the
/// binary form both ways, so that each arrives as it is; their text form is never written.
class PostgresqlConnection final : public SqlConnection
{
public:
    /// Connects. Waits up to `patience` seconds for other writers.
    PostgresqlConnection(const PostgresqlWords& words, unsigned patience);

    const SqlDialect& dialect() const override;
    void execute(const std::string& sql) override;
    std::size_t change(const std::string& sql,
                       const std::vector<SqlParameter>& parameters) override;
    void query(const std::string& sql, const std::vector<SqlParameter>& parameters,
               std::size_t columns, const std::function<void(const Row&)>& take) override;
    std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) override;
    bool holdsTransaction() override;
    std::string whyTransactionIsLost() override;

private:
    std::unique_ptr<PGconn, decltype(&PQfinish)> connection;
};

} // namespace devices::database
