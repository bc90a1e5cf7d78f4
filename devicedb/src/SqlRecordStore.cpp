#include "SqlRecordStore.h"

#include "ContentReader.h"
#include "DatabaseFailure.h"
#include "IndexWriter.h"
#include "ModuleBatches.h"
#include "ModuleSearch.h"
#include "NotInListFailure.h"
#include "RecordRow.h"
#include "SummaryRow.h"

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
    : transactions(std::move(name), std::move(openConnection), mode)
{}

SqlRecordStore::~SqlRecordStore() = default;

void SqlRecordStore::store(const std::vector<ModuleToStore>& modules)
{
    transactions.tables().store(modules);
    for (const ModuleToStore& module : modules) {
        transactions.notIndexed().insert({module.record->family, module.record->moduleIdText});
    }
}

void SqlRecordStore::insert(const ModuleToStore& module)
{
    transactions.change("write to", [&] { store({module}); });
}

// A batch is a savepoint of the transaction, so this needs one.
SqlRecordStore::Rejections SqlRecordStore::insertAll(const std::vector<ModuleToStore>& modules)
{
    if (!transactions.isInTransaction()) {
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
        transactions.change("write to", [&] { store(modulesAt(modules, batch)); });
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
    return transactions.read([&] {
        return firstOf(fetchRecords(
            transactions.connection(),
            std::string(recordSelect) + ofModule + " ORDER BY family LIMIT 1", {{moduleId, true}}));
    });
}

std::vector<StoredModule> SqlRecordStore::findAll(const std::vector<ModuleSummary>& modules)
{
    return transactions.read(
        [&] { return joined(fetchRecords(transactions.connection(), keysOf(modules)), {}); });
}

std::vector<StoredModule>
SqlRecordStore::findAllWithContent(const std::vector<ModuleSummary>& modules)
{
    const auto keys = keysOf(modules);
    return transactions.read([&] {
        return transactions.readOneState([&] {
            return joined(fetchRecords(transactions.connection(), keys),
                          readContents(transactions.connection(), keys));
        });
    });
}

std::vector<DeviceProperties> SqlRecordStore::list()
{
    return transactions.read([&] {
        return fetchRecords(transactions.connection(),
                            std::string(recordSelect) + " ORDER BY family, module_id", {});
    });
}

// The state in which searches know the modules that the transaction has stored.
template <typename Work>
auto SqlRecordStore::searchedState(Work work) -> decltype(work())
{
    return transactions.readOneState([&] {
        addToNotIndexed(transactions.connection(), transactions.notIndexed());
        return work();
    });
}

// What `take` throws is not the database's.
void SqlRecordStore::search(const PagedQuery& query, const SummaryTaker& take,
                            const std::function<void()>& forget)
{
    bool isTaken = false;
    const auto noted = [&](const ModuleSummary& module) {
        isTaken = !forget;
        return take(module);
    };
    transactions.readUnlessBegun(isTaken, [&] {
        if (forget) {
            forget();
        }
        try {
            return searchedState([&] {
                searchModules(transactions.connection(), transactions.schemaVersionFound(), query,
                              noted);
                return isTaken;
            });
        } catch (const NotInListFailure& failure) {
            throw NotInList(failureText(name(), "read", failure.what()));
        }
    });
}

SearchExplanation SqlRecordStore::explain(const PagedQuery& query)
{
    return transactions.read([&] {
        return searchedState([&] {
            return explainSearch(transactions.connection(), transactions.schemaVersionFound(),
                                 query);
        });
    });
}

ModuleCounts SqlRecordStore::counts()
{
    return transactions.read([&] { return countModules(transactions.connection()); });
}

std::optional<ModuleContent> SqlRecordStore::content(const std::string& family,
                                                     const std::string& moduleId)
{
    return transactions.read([&] {
        return transactions.readOneState([&] {
            return contentOf({family, moduleId}, transactions.connection());
        });
    });
}

std::size_t SqlRecordStore::removeKeys(const std::vector<RowStatement::Row>& keys)
{
    const std::size_t removed = transactions.tables().remove(keys);
    for (const RowStatement::Row& key : keys) {
        transactions.notIndexed().erase({key[0], key[1]});
    }
    return removed;
}

bool SqlRecordStore::remove(const std::string& moduleId)
{
    bool removed = false;
    transactions.change("write to", [&] {
        std::vector<RowStatement::Row> keys;
        transactions.connection().query(
            std::string("SELECT family, module_id FROM device_properties") + ofModule,
            {{moduleId, true}}, 2, [&](const SqlConnection::Row& key) { keys.push_back(key); });
        removed = removeKeys(keys) != 0;
    });
    return removed;
}

std::size_t SqlRecordStore::removeAll(const std::vector<ModuleSummary>& modules)
{
    std::size_t removed = 0;
    transactions.change("write to", [&] { removed = removeKeys(keysOf(modules)); });
    return removed;
}

} // namespace devices::database
