#include "SqliteRecordStore.h"

#include "DatabaseFailure.h"
#include "SqliteFile.h"
#include "SqliteRowStatement.h"

#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/Statement.h>

namespace devices::database {

using namespace Poco::Data::Keywords;

namespace {

const SqlDialect sqlite = {
    "BLOB",
    "INTEGER",
    " WITHOUT ROWID",
    "x''",
    "instr",
    "SELECT count(*), coalesce(sum(name IN ('schema_version', 'device_properties')), 0)"
    " FROM sqlite_master WHERE type = 'table'",
    "BEGIN",
    {"BEGIN IMMEDIATE"}};

Poco::Data::Session openSession(const std::string& path, const std::string& name, OpenMode mode)
{
    if (mode == OpenMode::ExistingOnly && isMissing(path)) {
        fail(name, "open", "there is no such file");
    }
    try {
        // The driver would try a file that cannot be opened again and again, for a minute.
        constexpr std::size_t noRetry = 0;
        return Poco::Data::Session(
            Poco::Data::SQLite::Connector().createSession(sqliteFileName(path), noRetry));
    } catch (const Poco::Exception&) {
        fail(name, "open", whyNotOpened(path));
    }
}

} // namespace

SqliteRecordStore::SqliteRecordStore(const std::string& path, OpenMode mode, unsigned patience)
    : SqlRecordStore("sqlite:" + path, openSession(path, "sqlite:" + path, mode), sqlite)
{
    configure(patience);
    prepareSchema(mode);
}

void SqliteRecordStore::configure(unsigned patience)
{
    try {
        execute("PRAGMA busy_timeout = " + std::to_string(patience * 1000)); // milliseconds
        execute("PRAGMA foreign_keys = ON");
        // A commit returns when the log is on the disk. EXTRA differs from FULL where the file
        // keeps a rollback journal: its removal is synchronised too.
        execute("PRAGMA synchronous = EXTRA");
        useWriteAheadLog();
    } catch (const Poco::Exception& failure) {
        fail(shownName, "open", reasonOf(failure));
    }
}

// The mode stays in the file. One that cannot be written, or that another program is just using,
// is used as it is: with a rollback journal readers and a writer wait for each other.
void SqliteRecordStore::useWriteAheadLog()
{
    std::string mode;
    session << "PRAGMA journal_mode", into(mode), now;
    if (mode == "wal" || mode == "memory") {
        return;
    }
    try {
        execute("PRAGMA journal_mode = WAL");
    } catch (const Poco::Exception&) {
    }
}

// What the driver says, without the name of its exception class, and once where it says
// "reason: reason".
std::string SqliteRecordStore::reasonOf(const Poco::Exception& failure)
{
    const std::string& message = failure.message();
    if (message.empty()) {
        return failure.what();
    }
    const std::string half = message.substr(0, (message.size() - 1) / 2);
    return message == half + ": " + half ? half : message;
}

bool SqliteRecordStore::holdsTransaction()
{
    return !session.getFeature("autoCommit");
}

// After some failures, a full disk for one, SQLite has rolled the whole transaction back by itself.
std::string SqliteRecordStore::whyTransactionIsLost()
{
    return "its transaction was taken back after an earlier failure";
}

std::unique_ptr<RowStatement> SqliteRecordStore::makeRowStatement(const RowSql& rowSql)
{
    return std::make_unique<SqliteRowStatement>(session, rowSql);
}

void SqliteRecordStore::execute(const std::string& sql)
{
    session << sql, now;
}

} // namespace devices::database
