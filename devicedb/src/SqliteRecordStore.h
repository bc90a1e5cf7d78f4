#pragma once

#include "SqlRecordStore.h"

namespace devices::database {

/// Device records in an SQLite file, or in memory for the path ":memory:".
///
/// Readers see the last committed state while a writer works (write-ahead log), and a committed
/// transaction survives a power cut: the log is synchronised before a commit returns.
class SqliteRecordStore final : public SqlRecordStore
{
public:
    /// Opens the file at `path`; `mode` says whether it is made with its schema when missing.
    /// Waits up to `patience` seconds for other writers.
    SqliteRecordStore(const std::string& path, OpenMode mode, unsigned patience);

protected:
    void execute(const std::string& sql) override;
    std::string reasonOf(const Poco::Exception& failure) override;
    bool holdsTransaction() override;
    std::string whyTransactionIsLost() override;
    std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) override;

private:
    void configure(unsigned patience);
    void useWriteAheadLog();
};

} // namespace devices::database
