#pragma once

#include "PostgresqlConnection.h"
#include "SqlRecordStore.h"

namespace devices::database {

/// Device records in a PostgreSQL database, or in an engine that speaks its protocol: plain SQL
/// alone, no triggers and no languages of the server.
class PostgresqlRecordStore final : public SqlRecordStore
{
public:
    /// Connects. `mode` says whether the tables are made when missing. Waits up to `patience`
    /// seconds for other writers.
    PostgresqlRecordStore(const PostgresqlConnection& words, OpenMode mode, unsigned patience);

protected:
    void execute(const std::string& sql) override;
    std::string reasonOf(const Poco::Exception& failure) override;
    bool holdsTransaction() override;
    std::string whyTransactionIsLost() override;
    std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) override;

private:
    PostgresqlConnection connection;
};

} // namespace devices::database
