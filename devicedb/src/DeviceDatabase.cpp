#include "devices/database/DeviceDatabase.h"

#include "RecordStore.h"

#include <utility>

namespace devices::database {

DeviceDatabase::DeviceDatabase(const std::string& url) : store(openRecordStore(url)) {}

DeviceDatabase::~DeviceDatabase() = default;

void DeviceDatabase::insert(const DeviceProperties& record)
{
    store->insert(record);
}

std::optional<DeviceProperties> DeviceDatabase::find(const std::string& moduleId)
{
    return store->find(moduleId);
}

std::vector<DeviceProperties> DeviceDatabase::list()
{
    return store->list();
}

bool DeviceDatabase::remove(const std::string& moduleId)
{
    return store->remove(moduleId);
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
        // The connection is gone, and the changes with it; a destructor cannot say so.
    }
}

void DeviceDatabase::Transaction::commit()
{
    store->commit();
    store = nullptr;
}

} // namespace devices::database
