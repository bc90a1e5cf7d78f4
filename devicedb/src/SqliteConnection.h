#pragma once

#include "SqlConnection.h"

#include "devices/database/DeviceDatabase.h"

#include <map>

struct sqlite3;

namespace devices::database {

/// An SQLite file, or a database in memory for the path ":memory:".
///
/// Readers see the last committed state while a writer works (write-ahead log), and a committed
/// transaction survives a power cut: the log is synchronised before a commit returns.
class SqliteConnection final : public SqlConnection
{
public:
    /// Opens the file at `path`; `mode` decides whether a missing one is created. Waits up to
    /// `patience` seconds for other writers.
    SqliteConnection(const std::string& path, OpenMode mode, unsigned patience);

    const SqlDialect& dialect() const override;
    void execute(const std::string& sql) override;
    void executeOften(const std::string& sql) override;
    std::size_t change(const std::string& sql,
                       const std::vector<SqlParameter>& parameters) override;
    void query(const std::string& sql, const std::vector<SqlParameter>& parameters,
               std::size_t columns, const std::function<void(const Row&)>& take) override;
    std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) override;
    bool holdsTransaction() override;
    std::string whyTransactionIsLost() override;

private:
    void useWriteAheadLog();

    std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection;
    std::map<std::string, std::unique_ptr<RowStatement>> often; // prepared by `executeOften`
};

} // namespace devices::database
