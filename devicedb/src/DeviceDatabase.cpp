#include "devices/database/DeviceDatabase.h"

#include "RecordStore.h"

#include <utility>

namespace devices::database {

DeviceDatabase::DeviceDatabase(const std::string& url)
    : DeviceDatabase(url, OpenMode::CreateMissing)
{}

DeviceDatabase::DeviceDatabase(const std::string& url, OpenMode mode)
    : store(openRecordStore(url, mode))
{}

DeviceDatabase::~DeviceDatabase() = default;

const std::string& DeviceDatabase::name() const
{
    return store->name();
}

void DeviceDatabase::insert(const DeviceProperties& record)
{
    store->insert(record, nullptr);
}

void DeviceDatabase::insert(const DeviceProperties& record, const ModuleContent& content)
{
    store->insert(record, &content);
}

std::optional<DeviceProperties> DeviceDatabase::find(const std::string& moduleId)
{
    return store->find(moduleId);
}

std::vector<DeviceProperties> DeviceDatabase::list()
{
    return store->list();
}

std::vector<ModuleSummary> DeviceDatabase::search(const ModuleQuery& query)
{
    return store->search(query);
}

void DeviceDatabase::visit(const std::vector<ModuleSummary>& modules,
                           const std::function<void(const DeviceProperties&)>& visitor)
{
    for (const ModuleSummary& module : modules) {
        if (const auto record = store->findExactly(module.family, module.moduleIdText)) {
            visitor(*record);
        }
    }
}

std::optional<ModuleContent> DeviceDatabase::content(const std::string& family,
                                                     const std::string& moduleId)
{
    return store->content(family, moduleId);
}

bool DeviceDatabase::remove(const std::string& moduleId)
{
    return store->remove(moduleId);
}

bool DeviceDatabase::remove(const std::string& family, const std::string& moduleId)
{
    return store->removeExactly(family, moduleId);
}

DeviceDatabase::Transaction DeviceDatabase::beginTransaction()
{
    return Transaction(*store);
}

DeviceDatabase::Transaction::Transaction(RecordStore& recordStore) : store(&recordStore)
{
    store->begin();
}

DeviceDatabase::Transaction::Transaction(Transaction&& other) noexcept
    : store(std::exchange(other.store, nullptr))
{}

DeviceDatabase::Transaction::~Transaction()
{
    if (store == nullptr) {
        return;
    }
    try {
        store->rollback();
    } catch (const std::exception&) {
        // The connection is lost, and with it the changes; a destructor cannot report that.
    }
}

void DeviceDatabase::Transaction::commit()
{
    store->commit();
    store = nullptr;
}

bool DeviceDatabase::Transaction::isAlive() const
{
    return store != nullptr && store->isTransactionAlive();
}

} // namespace devices::database
