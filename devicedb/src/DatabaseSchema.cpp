#include "DatabaseSchema.h"

#include "CatalogueWidths.h"
#include "DatabaseFailure.h"
#include "SearchTableFilling.h"
#include "SqlSchema.h"

#include <Poco/Thread.h>
#include <Poco/Timestamp.h>

#include <vector>

namespace devices::database {

namespace {

constexpr int versionOfWidths = 3;

// In one round trip.
void executeAll(const std::vector<std::string>& statements, SqlConnection& connection)
{
    std::string all;
    for (const std::string& statement : statements) {
        all += statement + ";";
    }
    if (!all.empty()) {
        connection.execute(all);
    }
}

// Who may read or write the catalogue may do it with the tables of searches.
void copyRights(SqlConnection& connection)
{
    const char* const select = connection.dialect().grantsOfModules;
    std::vector<std::string> grants;
    if (select != nullptr) {
        connection.query(select, {}, 1,
                         [&](const SqlConnection::Row& row) { grants.push_back(row[0]); });
    }
    for (const std::string& grant : grants) {
        connection.execute(grant);
    }
}

bool isKeptFromReaders(SqlConnection& connection)
{
    try {
        connection.execute(connection.dialect().keepReadersOut);
        return true;
    } catch (const SqlFailure& failure) {
        if (failure.concern != SqlFailure::Concern::Statement) {
            throw;
        }
        return false;
    }
}

// Those who begin to read while a lock is waited for wait too, and some lock in another order: each
// attempt is short, and gives back what it has.
void keepReadersOut(SqlConnection& connection)
{
    if (connection.dialect().keepReadersOut == nullptr) {
        return;
    }
    constexpr long pause = 100; // milliseconds
    const Poco::Timestamp start;
    const auto longest = Poco::Timestamp::resolution() * connection.dialect().secondsToWait;
    connection.execute("SAVEPOINT readable");
    while (!isKeptFromReaders(connection)) {
        if (start.elapsed() >= longest) {
            throw SqlFailure("others have been reading its tables for as long as writers wait");
        }
        connection.execute("ROLLBACK TO SAVEPOINT readable");
        Poco::Thread::sleep(pause);
    }
}

void addSearchTables(SqlConnection& connection)
{
    fillSearchTables(connection);
    copyRights(connection);
    keepReadersOut(connection);
    executeAll(sqlEndingVersion4(connection.dialect()), connection);
}

// The row stays: writers of other processes wait for it.
void storeVersion(SqlConnection& connection, int version, bool isNew)
{
    connection.execute((isNew ? "INSERT INTO schema_version (version) VALUES ("
                              : "UPDATE schema_version SET version = (") +
                       std::to_string(version) + ")");
}

} // namespace

void DatabaseSchema::prepare(OpenMode mode)
{
    const int version = readVersion();
    found = version;
    if (version == 0 && mode == OpenMode::ExistingOnly) {
        fail(shownName, "open", "it holds no device database");
    }
    if (version != schemaVersion) {
        migrateUnlessReadable(version, mode);
    }
}

// Someone who only reads need not wait until another process has migrated a large database.
void DatabaseSchema::migrateUnlessReadable(int version, OpenMode mode)
{
    try {
        migrate(version == 0 ? 10 : 1);
        found = schemaVersion;
    } catch (const SqlFailure& failure) {
        const bool isLost = failure.concern == SqlFailure::Concern::Connection;
        if (version >= readableVersion &&
            (failure.allowsReading() || (mode == OpenMode::ExistingOnly && !isLost))) {
            whyNotMigrated = failure.what();
            concernOfChanges =
                failure.allowsReading() ? failure.concern : SqlFailure::Concern::Change;
            return;
        }
        if (version == 0) {
            throw; // nothing is migrated: the database is new
        }
        throw SqlFailure("its schema of version " + std::to_string(version) +
                         " cannot be migrated to version " + std::to_string(schemaVersion) + ": " +
                         failure.what());
    }
}

// Another process may prepare the schema or write at the same time: it is waited for as for any
// other writer. An engine does not lock an empty database, so that the loser of a race needs
// another attempt, which finds the winner's schema.
void DatabaseSchema::migrate(int attempts)
{
    constexpr long pause = 100; // milliseconds
    for (int attemptNumber = 1;; ++attemptNumber) {
        try {
            connection.execute(connection.dialect().beginWriting);
            if (readVersion() != 0) {
                connection.execute(connection.dialect().claimWriting);
            }
            migrateFrom(readVersion());
            connection.execute("COMMIT");
            return;
        } catch (const SqlFailure& failure) {
            rollBack();
            if (readVersion() == schemaVersion) {
                return;
            }
            if (attemptNumber == attempts || failure.concern != SqlFailure::Concern::Statement) {
                throw;
            }
            Poco::Thread::sleep(pause);
        } catch (...) {
            rollBack();
            throw;
        }
    }
}

// Returns 0 for an empty database.
int DatabaseSchema::readVersion()
{
    std::int64_t tables = 0;
    std::int64_t ownTables = 0;
    bool hasSchema = false;
    connection.query(connection.dialect().countTables, {}, 3, [&](const SqlConnection::Row& row) {
        tables = numberOf(row[0]);
        ownTables = numberOf(row[1]);
        hasSchema = numberOf(row[2]) != 0;
    });
    if (!hasSchema) {
        fail(shownName, "open",
             "its search_path names no schema that exists and that the role may use");
    }
    if (tables == 0) {
        return 0;
    }
    if (ownTables != 2) {
        fail(shownName, "open",
             "it holds other tables, expected a device database or an empty one");
    }
    std::int64_t version = 0;
    connection.query("SELECT coalesce(max(version), 0) FROM schema_version", {}, 1,
                     [&](const SqlConnection::Row& row) { version = numberOf(row[0]); });
    if (version < 1) {
        fail(shownName, "open",
             "its table schema_version states version " + std::to_string(version) +
                 ", expected 1 or above");
    }
    if (version > schemaVersion) {
        fail(shownName, "open",
             "its schema has version " + std::to_string(version) + ", this library supports " +
                 std::to_string(schemaVersion) + " at most");
    }
    return static_cast<int>(version);
}

void DatabaseSchema::migrateFrom(int version)
{
    if (version == schemaVersion) {
        return; // another process was faster
    }
    const bool isNew = version == 0;
    const auto steps = sqlMigrations(connection.dialect());
    for (; version < schemaVersion; ++version) {
        executeAll(steps[static_cast<std::size_t>(version)], connection);
        if (version + 1 == versionOfWidths) {
            takeWidthsFromFiles(connection);
        } else if (version + 1 == versionOfSearchTables) {
            addSearchTables(connection);
        }
    }
    storeVersion(connection, version, isNew);
}

void DatabaseSchema::requireNewest() const
{
    if (found != schemaVersion) {
        throw SqlFailure("its schema of version " + std::to_string(found) +
                             " could not be migrated to version " + std::to_string(schemaVersion) +
                             ": " + whyNotMigrated,
                         concernOfChanges);
    }
}

// Fails if the engine has rolled back already.
void DatabaseSchema::rollBack()
{
    try {
        connection.execute("ROLLBACK");
    } catch (const SqlFailure&) {
        // The failure that led here is the one to report.
    }
}

} // namespace devices::database
