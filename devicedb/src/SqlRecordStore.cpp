#include "SqlRecordStore.h"

#include "CatalogueWidths.h"
#include "DatabaseFailure.h"
#include "ModuleSearch.h"
#include "RecordRow.h"
#include "SqlSchema.h"

#include <Poco/Thread.h>

namespace devices::database {

namespace {

constexpr const char* ofModule = " WHERE module_id = $1";

std::optional<DeviceProperties> firstOf(const std::vector<DeviceProperties>& records)
{
    return records.empty() ? std::nullopt : std::optional(records.front());
}

std::vector<ModuleToStore> modulesAt(const std::vector<ModuleToStore>& modules,
                                     const ModulePositions& positions)
{
    std::vector<ModuleToStore> chosen;
    chosen.reserve(positions.size());
    for (const std::size_t position : positions) {
        chosen.push_back(modules[position]);
    }
    return chosen;
}

} // namespace

SqlRecordStore::SqlRecordStore(std::string name, std::unique_ptr<SqlConnection> openConnection,
                               OpenMode mode)
    : shownName(std::move(name)), connection(std::move(openConnection)), openMode(mode)
{
    attempt("open", [this] { openSchema(); });
}

SqlRecordStore::~SqlRecordStore() = default;

template <typename Work>
auto SqlRecordStore::attempt(const char* attempted, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const SqlFailure& failure) {
        fail(shownName, attempted, failure.what());
    }
}

template <typename Work>
auto SqlRecordStore::repeatable(Access access, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const SqlFailure& failure) {
        if (inTransaction || !connectAgain(failure, access)) {
            throw;
        }
    }
    return work();
}

template <typename Work>
auto SqlRecordStore::read(Work work) -> decltype(work())
{
    return attempt("read", [&] { return repeatable(Access::Read, work); });
}

ModuleTables& SqlRecordStore::tables()
{
    if (moduleTables == nullptr) {
        moduleTables = std::make_unique<ModuleTables>(*connection);
    }
    return *moduleTables;
}

// An empty database may be that of a server that only reads.
void SqlRecordStore::openSchema()
{
    try {
        prepareSchema();
    } catch (const SqlFailure& failure) {
        if (openMode == OpenMode::ExistingOnly ||
            !connection->connectAgain(failure, Access::Change)) {
            throw;
        }
        prepareSchema();
    }
}

// Another server may have another version of the schema.
bool SqlRecordStore::connectAgain(const SqlFailure& failure, Access access)
{
    moduleTables.reset();
    if (!connection->connectAgain(failure, access)) {
        return false;
    }
    prepareSchema();
    return true;
}

void SqlRecordStore::prepareSchema()
{
    const int version = readSchemaVersion();
    if (version == 0 && openMode == OpenMode::ExistingOnly) {
        fail(shownName, "open", "it holds no device database");
    }
    if (version != schemaVersion) {
        migrateUnlessReadable(version);
    }
}

void SqlRecordStore::migrateUnlessReadable(int version)
{
    try {
        migrate();
    } catch (const SqlFailure& failure) {
        if (failure.allowsReading() && version >= readableVersion) {
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
// other writer. If an engine does not lock an empty database, the loser of the race retries and
// finds the winner's schema.
void SqlRecordStore::migrate()
{
    constexpr int attempts = 10;
    constexpr long pause = 100; // milliseconds
    for (int attemptNumber = 1;; ++attemptNumber) {
        try {
            connection->execute(connection->dialect().beginWriting);
            if (readSchemaVersion() != 0) {
                connection->execute(connection->dialect().claimWriting);
            }
            migrateFrom(readSchemaVersion());
            connection->execute("COMMIT");
            return;
        } catch (const SqlFailure& failure) {
            takeBack(true);
            if (readSchemaVersion() == schemaVersion) {
                return;
            }
            if (attemptNumber == attempts || failure.allowsReading()) {
                throw;
            }
            Poco::Thread::sleep(pause);
        } catch (...) {
            takeBack(true);
            throw;
        }
    }
}

// Returns 0 for an empty database.
int SqlRecordStore::readSchemaVersion()
{
    std::int64_t tables = 0;
    std::int64_t ownTables = 0;
    connection->query(connection->dialect().countTables, {}, 2, [&](const SqlConnection::Row& row) {
        tables = numberOf(row[0]);
        ownTables = numberOf(row[1]);
    });
    if (tables == 0) {
        return 0;
    }
    if (ownTables != 2) {
        fail(shownName, "open",
             "it holds other tables, expected a device database or an empty one");
    }
    std::int64_t version = 0;
    connection->query("SELECT coalesce(max(version), 0) FROM schema_version", {}, 1,
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

void SqlRecordStore::migrateFrom(int version)
{
    constexpr int versionOfWidths = 3;
    if (version == schemaVersion) {
        return; // another process was faster
    }
    const auto steps = sqlMigrations(connection->dialect());
    for (; version < schemaVersion; ++version) {
        for (const std::string& statement : steps[static_cast<std::size_t>(version)]) {
            connection->execute(statement);
        }
        if (version + 1 == versionOfWidths) {
            takeWidthsFromFiles(*connection);
        }
    }
    connection->execute("DELETE FROM schema_version");
    connection->execute("INSERT INTO schema_version (version) VALUES (" + std::to_string(version) +
                        ")");
}

void SqlRecordStore::startTransaction()
{
    repeatable(Access::Change, [this] {
        try {
            connection->execute(connection->dialect().beginWriting + "; " +
                                connection->dialect().claimWriting); // one round trip
        } catch (...) {
            takeBack(true);
            throw;
        }
    });
}

// A server that is lost while the answer is awaited may have stored the changes or not.
void SqlRecordStore::commitTransaction()
{
    try {
        connection->execute("COMMIT");
    } catch (const SqlFailure& failure) {
        if (failure.concern != SqlFailure::Concern::Connection) {
            throw;
        }
        throw OutcomeUnknown(failureText(shownName, "change",
                                         std::string(failure.what()) +
                                             " during the commit: it is not known whether the "
                                             "changes are stored"));
    }
}

void SqlRecordStore::begin()
{
    if (inTransaction) {
        fail(shownName, "change", "cannot start a transaction within a transaction");
    }
    attempt("change", [this] { startTransaction(); });
    inTransaction = true;
}

void SqlRecordStore::commit()
{
    requireTransaction();
    attempt("change", [this] { commitTransaction(); });
    inTransaction = false;
}

void SqlRecordStore::rollback()
{
    inTransaction = false;
    takeBack(true);
}

bool SqlRecordStore::isTransactionAlive()
{
    return inTransaction && connection->holdsTransaction();
}

// Changes after a lost transaction would be stored outside of it, each one permanently.
void SqlRecordStore::requireTransaction()
{
    if (inTransaction && !connection->holdsTransaction()) {
        fail(shownName, "change", connection->whyTransactionIsLost());
    }
}

// Fails if the engine has rolled back already, or the connection is lost: nothing is left to do
// then.
void SqlRecordStore::takeBack(bool wholeTransaction)
{
    try {
        connection->execute(wholeTransaction
                                ? "ROLLBACK"
                                : "ROLLBACK TO SAVEPOINT one_change; RELEASE SAVEPOINT one_change");
    } catch (const SqlFailure&) {
        // The failure that led here is the one to report.
    }
    moduleTables.reset(); // its statements cannot be used after a failure
}

void SqlRecordStore::change(const char* attempted, const std::function<void()>& work)
{
    requireTransaction();
    attempt(attempted, [&] {
        const bool alone = !inTransaction;
        if (alone) {
            startTransaction();
        } else {
            connection->executeOften("SAVEPOINT one_change");
        }
        try {
            work();
            alone ? commitTransaction() : connection->executeOften("RELEASE SAVEPOINT one_change");
        } catch (const SqlFailure& failure) {
            takeBack(alone || failure.concern != SqlFailure::Concern::Statement);
            throw;
        } catch (...) {
            takeBack(alone);
            throw;
        }
    });
}

void SqlRecordStore::insert(const ModuleToStore& module)
{
    change("write to", [&] { tables().store({module}); });
}

// A batch is a savepoint of the transaction, so this needs one.
SqlRecordStore::Rejections SqlRecordStore::insertAll(const std::vector<ModuleToStore>& modules)
{
    if (!inTransaction) {
        begin();
        try {
            Rejections rejections = insertAll(modules);
            commit();
            return rejections;
        } catch (...) {
            rollback();
            throw;
        }
    }
    Rejections rejections(modules.size());
    for (const ModulePositions& batch : batchesOf(modules)) {
        storeBatch(modules, batch, rejections);
    }
    return rejections;
}

// A rejected module rejects its batch: the halves are stored on their own, until it is alone.
void SqlRecordStore::storeBatch(const std::vector<ModuleToStore>& modules,
                                const ModulePositions& batch, Rejections& rejections)
{
    try {
        change("write to", [&] { tables().store(modulesAt(modules, batch)); });
    } catch (const std::runtime_error& failure) {
        if (!isTransactionAlive()) {
            throw;
        }
        if (batch.size() == 1) {
            rejections[batch.front()] = failure.what();
            return;
        }
        const auto middle = batch.begin() + static_cast<std::ptrdiff_t>(batch.size() / 2);
        storeBatch(modules, {batch.begin(), middle}, rejections);
        storeBatch(modules, {middle, batch.end()}, rejections);
    }
}

std::optional<DeviceProperties> SqlRecordStore::find(const std::string& moduleId)
{
    return read([&] {
        return firstOf(fetchRecords(
            *connection, std::string(recordSelect) + ofModule + " ORDER BY family LIMIT 1",
            {{moduleId, true}}));
    });
}

std::vector<DeviceProperties> SqlRecordStore::findAll(const std::vector<ModuleSummary>& modules)
{
    return read([&] { return fetchRecords(*connection, keysOf(modules)); });
}

std::vector<DeviceProperties> SqlRecordStore::list()
{
    return read([&] {
        return fetchRecords(*connection, std::string(recordSelect) + " ORDER BY family, module_id",
                            {});
    });
}

std::vector<ModuleSummary> SqlRecordStore::search(const ModuleQuery& query)
{
    return read([&] { return searchModules(*connection, query); });
}

std::optional<ModuleContent> SqlRecordStore::content(const std::string& family,
                                                     const std::string& moduleId)
{
    requireTransaction();
    return read([&] {
        if (inTransaction) {
            return readContent(*connection, family, moduleId);
        }
        connection->execute(connection->dialect().beginReading);
        try {
            auto content = readContent(*connection, family, moduleId);
            connection->execute("COMMIT");
            return content;
        } catch (...) {
            takeBack(true);
            throw;
        }
    });
}

bool SqlRecordStore::remove(const std::string& moduleId)
{
    bool removed = false;
    change("write to", [&] {
        std::vector<RowStatement::Row> keys;
        connection->query(std::string("SELECT family, module_id FROM device_properties") + ofModule,
                          {{moduleId, true}}, 2,
                          [&](const SqlConnection::Row& key) { keys.push_back(key); });
        removed = tables().remove(keys) != 0;
    });
    return removed;
}

std::size_t SqlRecordStore::removeAll(const std::vector<ModuleSummary>& modules)
{
    std::size_t removed = 0;
    change("write to", [&] { removed = tables().remove(keysOf(modules)); });
    return removed;
}

} // namespace devices::database
