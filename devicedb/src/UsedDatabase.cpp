#include "devices/database/DeviceDatabase.h"

#include <cstdlib>
#include <utility>

namespace devices::database {

namespace {

constexpr const char* urlVariable = "DEVICE_DATABASE_URL";
constexpr const char* defaultUrl = "sqlite:devices.sqlite";

// Kept until the process ends: a host may still insert while its own statics are destroyed.
std::unique_ptr<DeviceDatabase>& chosen()
{
    static auto& database = *new std::unique_ptr<DeviceDatabase>;
    return database;
}

std::function<void(DeviceProperties&)>& chosenInsertion()
{
    static auto& insertion = *new std::function<void(DeviceProperties&)>;
    return insertion;
}

} // namespace

std::string defaultDatabaseUrl()
{
    const char* const url = std::getenv(urlVariable);
    return url != nullptr ? url : defaultUrl;
}

void useDatabase(const std::string& url)
{
    chosen() = std::make_unique<DeviceDatabase>(url);
}

DeviceDatabase& usedDatabase()
{
    if (chosen() == nullptr) {
        useDatabase(defaultDatabaseUrl());
    }
    return *chosen();
}

void insertDeviceProperties(DeviceProperties& record)
{
    if (chosenInsertion()) {
        chosenInsertion()(record);
    } else {
        usedDatabase().insert(record);
    }
}

void insertThrough(std::function<void(DeviceProperties&)> insertion)
{
    chosenInsertion() = std::move(insertion);
}

} // namespace devices::database
