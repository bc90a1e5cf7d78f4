#include "SqliteConnection.h"

#include "SqliteFile.h"
#include "SqliteRowStatement.h"

#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/SQLite/SQLiteException.h>
#include <Poco/Data/SQLite/Utility.h>
#include <Poco/Data/Statement.h>

#include <deque>

namespace devices::database {

using namespace Poco::Data::Keywords;
using Poco::Data::BLOB;

namespace {

// What the driver says, without the name of its exception class, and once where it says
// "reason: reason".
std::string reasonOf(const Poco::Exception& failure)
{
    const std::string& message = failure.message();
    if (message.empty()) {
        return failure.what();
    }
    const std::string half = message.substr(0, (message.size() - 1) / 2);
    return message == half + ": " + half ? half : message;
}

template <typename... Kinds>
bool isAnyOf(const Poco::Exception& failure)
{
    return (... || (dynamic_cast<const Kinds*>(&failure) != nullptr));
}

SqlFailure::Concern concernOf(const Poco::Exception& failure)
{
    using namespace Poco::Data::SQLite;
    return isAnyOf<CantOpenDBFileException, CorruptImageException, DatabaseFullException,
                   DBAccessDeniedException, DBLockedException, InternalDBErrorException,
                   IOErrorException, LockProtocolException, NoMemoryException, ReadOnlyException,
                   TableLockedException>(failure)
               ? SqlFailure::Concern::Database
               : SqlFailure::Concern::Statement;
}

Poco::Data::Session openSession(const std::string& path, OpenMode mode)
{
    if (mode == OpenMode::ExistingOnly && isMissing(path)) {
        throw SqlFailure("there is no such file");
    }
    try {
        // The driver would try a file that cannot be opened again and again, for a minute.
        constexpr std::size_t noRetry = 0;
        return Poco::Data::Session(
            Poco::Data::SQLite::Connector().createSession(sqliteFileName(path), noRetry));
    } catch (const Poco::Exception&) {
        throw SqlFailure(whyNotOpened(path));
    }
}

BLOB toBlob(const std::string& bytes)
{
    return {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()};
}

// Runs `work`; turns an exception of the driver into a failure of ours.
void withDriver(const std::function<void()>& work)
{
    try {
        work();
    } catch (const Poco::Exception& failure) {
        throw SqlFailure(reasonOf(failure), concernOf(failure));
    }
}

// The values of a statement, in places that stay where they are while it lives.
class BoundValues
{
public:
    void bind(Poco::Data::Statement& statement, const std::vector<SqlParameter>& parameters)
    {
        for (const SqlParameter& parameter : parameters) {
            if (parameter.isBytes) {
                blobs.push_back(toBlob(parameter.value));
                statement, use(blobs.back());
            } else {
                texts.push_back(parameter.value);
                statement, use(texts.back());
            }
        }
    }

private:
    std::deque<BLOB> blobs;
    std::deque<std::string> texts;
};

} // namespace

SqliteConnection::SqliteConnection(const std::string& path, OpenMode mode, unsigned patience)
    : session(openSession(path, mode))
{
    execute("PRAGMA busy_timeout = " + std::to_string(patience * 1000)); // milliseconds
    execute("PRAGMA foreign_keys = ON");
    // Holds the changes of a populate with thousands of modules, which come in no order, and the
    // index of a hundred thousand. Memory is taken as pages come.
    execute("PRAGMA cache_size = -65536"); // kibibytes
    // A commit returns when the log is on the disk. EXTRA differs from FULL where the file keeps a
    // rollback journal: its removal is synchronised too.
    execute("PRAGMA synchronous = EXTRA");
    useWriteAheadLog();
}

// A file that may only be read begins a transaction as any other, and refuses its first change. So
// the claim is a change, of nothing.
const SqlDialect& SqliteConnection::dialect() const
{
    static const SqlDialect sqlite = {
        "BLOB",
        "INTEGER",
        " WITHOUT ROWID",
        "x''",
        "instr",
        "SELECT count(*), coalesce(sum(name IN ('schema_version', 'device_properties')), 0)"
        " FROM sqlite_master WHERE type = 'table'",
        "BEGIN",
        "BEGIN IMMEDIATE",
        "DELETE FROM schema_version WHERE false"};
    return sqlite;
}

// The mode stays in the file. One that cannot be written, or that another program is just using,
// is used as it is: with a rollback journal readers and a writer wait for each other.
void SqliteConnection::useWriteAheadLog()
{
    std::string mode;
    query("PRAGMA journal_mode", {}, 1, [&](const Row& row) { mode = row[0]; });
    if (mode == "wal" || mode == "memory") {
        return;
    }
    try {
        execute("PRAGMA journal_mode = WAL");
    } catch (const SqlFailure&) {
        // Some journal it has.
    }
}

void SqliteConnection::execute(const std::string& sql)
{
    executeSqlite(Poco::Data::SQLite::Utility::dbHandle(session), sql);
}

void SqliteConnection::executeOften(const std::string& sql)
{
    auto& statement = often[sql];
    if (statement == nullptr) {
        statement = makeRowStatement({sql, {}, ""});
    }
    statement->execute({{}});
}

std::size_t SqliteConnection::change(const std::string& sql,
                                     const std::vector<SqlParameter>& parameters)
{
    std::size_t rows = 0;
    withDriver([&] {
        BoundValues values;
        Poco::Data::Statement statement(session);
        statement << sql;
        values.bind(statement, parameters);
        rows = statement.execute();
    });
    return rows;
}

// Every cell is fetched as bytes: SQLite gives numbers in decimal then, and cuts no text at a NUL.
void SqliteConnection::query(const std::string& sql, const std::vector<SqlParameter>& parameters,
                             std::size_t columns, const std::function<void(const Row&)>& take)
{
    withDriver([&] {
        BoundValues values;
        std::vector<BLOB> cells(columns);
        Poco::Data::Statement select(session);
        select << sql;
        values.bind(select, parameters);
        for (BLOB& cell : cells) {
            select, into(cell);
        }
        select, range(0, 1);
        Row row(columns);
        while (!select.done()) {
            if (select.execute() == 0) {
                continue;
            }
            for (std::size_t column = 0; column < columns; ++column) {
                row[column].assign(cells[column].begin(), cells[column].end());
            }
            take(row);
        }
    });
}

std::unique_ptr<RowStatement> SqliteConnection::makeRowStatement(const RowSql& rowSql)
{
    return std::make_unique<SqliteRowStatement>(Poco::Data::SQLite::Utility::dbHandle(session),
                                                rowSql);
}

bool SqliteConnection::holdsTransaction()
{
    return !session.getFeature("autoCommit");
}

// After some failures, a full disk for one, SQLite has rolled the whole transaction back by itself.
std::string SqliteConnection::whyTransactionIsLost()
{
    return "its transaction was taken back after an earlier failure";
}

} // namespace devices::database
