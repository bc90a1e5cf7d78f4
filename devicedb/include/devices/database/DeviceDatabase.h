#pragma once

#include "devices/database/DeviceDatabaseApi.h"
#include "devices/database/DeviceProperties.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

class RecordStore;

/// One open device database.
///
/// Texts and byte vectors of a record come back byte for byte, NUL bytes included. Failures are
/// `std::runtime_error` with one sentence naming the database. An object must not be used by two
/// threads at once.
class DEVICE_DATABASE_API DeviceDatabase
{
public:
    /// Groups changes: they become visible together at `commit`, or not at all.
    class DEVICE_DATABASE_API Transaction
    {
    public:
        /// Takes the transaction over; `other` has none left.
        Transaction(Transaction&& other) noexcept;
        Transaction& operator=(Transaction&& other) = delete;
        /// Takes every change of the transaction back unless it was committed.
        ~Transaction();

        /// Makes the changes last. Throws when that fails; nothing is changed then.
        void commit();

    private:
        friend class DeviceDatabase;
        explicit Transaction(RecordStore& store);
        RecordStore* store; ///< Null once committed or moved from.
    };

    /// Opens the database at `url`: "sqlite:PATH" (created when missing) or "sqlite::memory:".
    explicit DeviceDatabase(const std::string& url);
    ~DeviceDatabase();

    DeviceDatabase(const DeviceDatabase&) = delete;
    DeviceDatabase& operator=(const DeviceDatabase&) = delete;

    /// Stores `record`, replacing the one of the same family and module identifier.
    void insert(const DeviceProperties& record);

    /// Returns the record with the module identifier text `moduleId`, if there is one.
    std::optional<DeviceProperties> find(const std::string& moduleId);

    /// Returns every record, ordered by family and module identifier.
    std::vector<DeviceProperties> list();

    /// Removes the record with the module identifier text `moduleId`. Returns whether there was
    /// one.
    bool remove(const std::string& moduleId);

    /// Starts a transaction. The database must outlive it; transactions do not nest.
    Transaction beginTransaction();

private:
    std::unique_ptr<RecordStore> store;
};

/// Chooses and opens the database for `insertDeviceProperties` in this process.
DEVICE_DATABASE_API void useDatabase(const std::string& url);

/// Returns the URL that is used without a choice: that of the environment variable
/// `DEVICE_DATABASE_URL`, else "sqlite:devices.sqlite".
DEVICE_DATABASE_API std::string defaultDatabaseUrl();

/// Returns the database chosen with `useDatabase`, or the one at `defaultDatabaseUrl`, which is
/// then opened. It lives until the next `useDatabase`.
DEVICE_DATABASE_API DeviceDatabase& usedDatabase();

/// Stores `record` in the used database. What the device parser calls for each mx file.
DEVICE_DATABASE_API void insertDeviceProperties(DeviceProperties& record);

} // namespace devices::database
