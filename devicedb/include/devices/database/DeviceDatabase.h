#pragma once

#include "devices/database/DeviceDatabaseApi.h"
#include "devices/database/DeviceProperties.h"
#include "devices/database/ModuleContent.h"
#include "devices/database/ModuleQuery.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

class RecordStore;

/// What is done about a database that is not there.
enum class OpenMode
{
    CreateMissing, ///< It is made: the file, the tables.
    ExistingOnly   ///< That is a failure.
};

/// One open device database.
///
/// Texts and byte vectors of a record come back byte for byte, NUL bytes included. Failures are
/// `std::runtime_error` with one sentence naming the database. An object must not be used by two
/// threads at once.
class DEVICE_DATABASE_API DeviceDatabase
{
public:
    /// Groups changes: they become visible together at `commit`, or not at all. A change that fails
    /// is taken back alone; what was stored before it stays in the transaction.
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

        /// Returns whether the engine still holds the transaction. It is lost with the connection,
        /// and after some failures, a full disk for one; every further change fails then.
        bool isAlive() const;

    private:
        friend class DeviceDatabase;
        explicit Transaction(RecordStore& store);
        RecordStore* store; ///< Null once committed or moved from.
    };

    /// Opens the database at `url`: "sqlite:PATH", "sqlite::memory:" or "postgresql:CONNECTION",
    /// libpq's connection words or URL.
    explicit DeviceDatabase(const std::string& url);
    /// Opens it so; the constructor above makes what is missing.
    DeviceDatabase(const std::string& url, OpenMode mode);
    ~DeviceDatabase();

    DeviceDatabase(const DeviceDatabase&) = delete;
    DeviceDatabase& operator=(const DeviceDatabase&) = delete;

    /// Returns the database as messages name it: engine, host and database, never a password.
    const std::string& name() const;

    /// Stores `record`, replacing the one of the same family and module identifier. The catalogue
    /// no longer knows what is inside the module.
    ///
    /// `privateProps` of a translated device is a record without its mx file: set `mxFileData` to
    /// the bytes that `loadFile` gave, or the module can be listed but not written back.
    void insert(const DeviceProperties& record);

    /// Stores `record` and what is inside the module, together or not at all. Family and module
    /// identifier must be texts as `ModuleContent` holds them.
    void insert(const DeviceProperties& record, const ModuleContent& content);

    /// Returns the record with the module identifier text `moduleId`, if there is one.
    std::optional<DeviceProperties> find(const std::string& moduleId);

    /// Returns every record, ordered by family and module identifier.
    std::vector<DeviceProperties> list();

    /// Returns the modules that `query` asks for, ordered by family and module identifier. Throws
    /// when a condition names no field or compares it with what is no value of it.
    std::vector<ModuleSummary> search(const ModuleQuery& query);

    /// Calls `visitor` for the record of each of `modules` that there still is.
    void visit(const std::vector<ModuleSummary>& modules,
               const std::function<void(const DeviceProperties&)>& visitor);

    /// Returns what is inside the module, if the catalogue knows.
    std::optional<ModuleContent> content(const std::string& family, const std::string& moduleId);

    /// Removes the record with the module identifier text `moduleId`. Returns whether there was
    /// one.
    bool remove(const std::string& moduleId);

    /// Removes the record of one family.
    bool remove(const std::string& family, const std::string& moduleId);

    /// Starts a transaction, waiting for other writers. The database must outlive it; transactions
    /// do not nest.
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

/// Stores `record` in the used database, or calls the insertion chosen with `insertThrough`. What
/// the device parser calls for each mx file.
DEVICE_DATABASE_API void insertDeviceProperties(DeviceProperties& record);

/// Makes `insertDeviceProperties` call `insertion` in place of its own work, until it is called
/// with an empty function. For a host that stores more than the record for each module, or
/// elsewhere.
DEVICE_DATABASE_API void insertThrough(std::function<void(DeviceProperties&)> insertion);

} // namespace devices::database
