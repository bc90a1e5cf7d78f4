#include "SqlRecordStore.h"

#include "ContentReader.h"
#include "DatabaseFailure.h"
#include "IndexWriter.h"
#include "ModuleSearch.h"
#include "NotInListFailure.h"
#include "RecordRow.h"

#include <utility>

namespace devices::database {

namespace {

constexpr const char* ofModule = " WHERE module_id = $1";

std::optional<DeviceProperties> firstOf(const std::vector<DeviceProperties>& records)
{
    return records.empty() ? std::nullopt : std::optional(records.front());
}

std::optional<ModuleContent> contentOf(const RowStatement::Row& key, SqlConnection& connection)
{
    auto contents = readContents(connection, {key});
    const auto found = contents.find(key);
    return found == contents.end() ? std::nullopt : std::optional(std::move(found->second));
}

// Each record with its content, if there is any.
std::vector<StoredModule> joined(const std::vector<DeviceProperties>& records,
                                 ContentsByKey contents)
{
    std::vector<StoredModule> modules;
    for (const DeviceProperties& record : records) {
        modules.push_back({record, std::nullopt});
        const auto content = contents.find({record.family, record.moduleIdText});
        if (content != contents.end()) {
            modules.back().content = std::move(content->second);
        }
    }
    return modules;
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
    : shownName(std::move(name)),
      connection(std::move(openConnection)),
      openMode(mode),
      schema(shownName, *connection)
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
        schema.prepare(openMode);
    } catch (const SqlFailure& failure) {
        if (openMode == OpenMode::ExistingOnly ||
            !connection->connectAgain(failure, Access::Change)) {
            throw;
        }
        schema.prepare(openMode);
    }
}

// Another server may have another version of the schema.
bool SqlRecordStore::connectAgain(const SqlFailure& failure, Access access)
{
    moduleTables.reset();
    if (!connection->connectAgain(failure, access)) {
        return false;
    }
    schema.prepare(openMode);
    return true;
}

void SqlRecordStore::startTransaction()
{
    schema.requireNewest();
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
    attempt("change", [this] {
        updateSearchIndex(*connection, std::exchange(notIndexed, {}));
        commitTransaction();
    });
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
    if (wholeTransaction) {
        notIndexed.clear();
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
            if (alone) {
                updateSearchIndex(*connection, std::exchange(notIndexed, {}));
            }
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

void SqlRecordStore::store(const std::vector<ModuleToStore>& modules)
{
    tables().store(modules);
    for (const ModuleToStore& module : modules) {
        notIndexed.insert({module.record->family, module.record->moduleIdText});
    }
}

void SqlRecordStore::insert(const ModuleToStore& module)
{
    change("write to", [&] { store({module}); });
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
        change("write to", [&] { store(modulesAt(modules, batch)); });
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

std::vector<StoredModule> SqlRecordStore::findAll(const std::vector<ModuleSummary>& modules)
{
    return read([&] { return joined(fetchRecords(*connection, keysOf(modules)), {}); });
}

std::vector<StoredModule>
SqlRecordStore::findAllWithContent(const std::vector<ModuleSummary>& modules)
{
    const auto keys = keysOf(modules);
    return read([&] {
        return readOneState([&] {
            return joined(fetchRecords(*connection, keys), readContents(*connection, keys));
        });
    });
}

std::vector<DeviceProperties> SqlRecordStore::list()
{
    return read([&] {
        return fetchRecords(*connection, std::string(recordSelect) + " ORDER BY family, module_id",
                            {});
    });
}

template <typename Work>
auto SqlRecordStore::readOneState(Work work) -> decltype(work())
{
    requireTransaction();
    if (inTransaction) {
        return work();
    }
    connection->execute(connection->dialect().beginReading);
    try {
        auto result = work();
        connection->execute("COMMIT");
        return result;
    } catch (...) {
        takeBack(true);
        throw;
    }
}

// Only a search that has given nothing is repeated. What `take` throws is not the database's.
void SqlRecordStore::search(const PagedQuery& query, const SummaryTaker& take)
{
    std::size_t taken = 0;
    const auto counted = [&](const ModuleSummary& module) {
        ++taken;
        return take(module);
    };
    attempt("read", [&] {
        const auto search = [&] {
            try {
                return readOneState([&] {
                    addToNotIndexed(*connection, notIndexed);
                    searchModules(*connection, schema.version(), query, counted);
                    return taken;
                });
            } catch (const NotInListFailure& failure) {
                throw NotInList(failureText(shownName, "read", failure.what()));
            }
        };
        try {
            search();
        } catch (const SqlFailure& failure) {
            if (taken != 0 || inTransaction || !connectAgain(failure, Access::Read)) {
                throw;
            }
            search();
        }
    });
}

SearchExplanation SqlRecordStore::explain(const PagedQuery& query)
{
    return read([&] {
        return readOneState([&] {
            addToNotIndexed(*connection, notIndexed);
            return explainSearch(*connection, schema.version(), query);
        });
    });
}

ModuleCounts SqlRecordStore::counts()
{
    return read([&] { return countModules(*connection); });
}

std::optional<ModuleContent> SqlRecordStore::content(const std::string& family,
                                                     const std::string& moduleId)
{
    return read([&] {
        return readOneState([&] { return contentOf({family, moduleId}, *connection); });
    });
}

std::size_t SqlRecordStore::removeKeys(const std::vector<RowStatement::Row>& keys)
{
    const std::size_t removed = tables().remove(keys);
    for (const RowStatement::Row& key : keys) {
        notIndexed.erase({key[0], key[1]});
    }
    return removed;
}

bool SqlRecordStore::remove(const std::string& moduleId)
{
    bool removed = false;
    change("write to", [&] {
        std::vector<RowStatement::Row> keys;
        connection->query(std::string("SELECT family, module_id FROM device_properties") + ofModule,
                          {{moduleId, true}}, 2,
                          [&](const SqlConnection::Row& key) { keys.push_back(key); });
        removed = removeKeys(keys) != 0;
    });
    return removed;
}

std::size_t SqlRecordStore::removeAll(const std::vector<ModuleSummary>& modules)
{
    std::size_t removed = 0;
    change("write to", [&] { removed = removeKeys(keysOf(modules)); });
    return removed;
}

} // namespace devices::database
