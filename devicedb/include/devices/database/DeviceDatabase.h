#pragma once

#include "devices/database/DeviceDatabaseApi.h"
#include "devices/database/DeviceProperties.h"
#include "devices/database/ModuleContent.h"
#include "devices/database/ModuleQuery.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace devices::database {

class RecordStore;

/// What to do if the database does not exist.
enum class OpenMode
{
    CreateMissing, ///< Create it: the file, the tables.
    ExistingOnly   ///< Fail.
};

/// A failure after which it is not known whether the changes are stored: the connection to a server
/// was lost while it committed them. The catalogue is the old or the new one as a whole.
class DEVICE_DATABASE_API OutcomeUnknown : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A search that cannot go on after `PagedQuery::after`: this module is not in the database, or
/// does not match the query.
class DEVICE_DATABASE_API NotInList : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// `DeviceDatabase::insertAll` stores so many modules in one statement, or fewer if they are large.
inline constexpr std::size_t modulesOfBatch = 256;

/// A module to store. What it points to must outlive the call that it is given to.
struct ModuleToStore
{
    const DeviceProperties* record; ///< As for `DeviceDatabase::insert`.
    const ModuleContent* content;   ///< Null: without content.
};

/// One open device database.
///
/// Texts and byte vectors of a record are returned byte for byte, NUL bytes included. Failures are
/// `std::runtime_error` with one sentence naming the database. A lost connection to a server is
/// made again by the next call outside a transaction, to another of its hosts if necessary. An
/// object must not be used by two threads at once.
class DEVICE_DATABASE_API DeviceDatabase
{
public:
    /// Groups changes: they become visible together at `commit`, or not at all. A change that fails
    /// is undone alone; earlier changes stay in the transaction.
    class DEVICE_DATABASE_API Transaction
    {
    public:
        /// Moves the transaction; `other` has none afterwards.
        Transaction(Transaction&& other) noexcept;
        Transaction& operator=(Transaction&& other) = delete;
        /// Rolls the transaction back unless it was committed.
        ~Transaction();

        /// Commits the changes. Throws if that fails; nothing is changed then, except perhaps after
        /// an `OutcomeUnknown`.
        void commit();

        /// Returns whether the engine still holds the transaction. It is lost with the connection,
        /// and after some failures, such as a full disk; every further change fails then.
        bool isAlive() const;

    private:
        friend class DeviceDatabase;
        explicit Transaction(RecordStore& store);
        RecordStore* store; ///< Null once committed or moved from.
    };

    /// Opens the database at `url`: "sqlite:PATH", "sqlite::memory:" or "postgresql:CONNECTION",
    /// the latter a libpq connection string or URL.
    explicit DeviceDatabase(const std::string& url);
    /// As above with this mode; the constructor above creates what is missing.
    DeviceDatabase(const std::string& url, OpenMode mode);
    ~DeviceDatabase();

    DeviceDatabase(const DeviceDatabase&) = delete;
    DeviceDatabase& operator=(const DeviceDatabase&) = delete;

    /// Returns the name of the database in messages: engine, host and database, never a password.
    const std::string& name() const;

    /// Stores `record`, replacing the one of the same family and module identifier. Removes the
    /// module's content from the catalogue.
    ///
    /// `privateProps` of a translated device is a record without its mx file: set `mxFileData` to
    /// the bytes that `loadFile` gave, or the module can be listed but not written back.
    void insert(const DeviceProperties& record);

    /// Stores `record` and the module's content, together or not at all. Family and module
    /// identifier must be texts as `ModuleContent` holds them.
    void insert(const DeviceProperties& record, const ModuleContent& content);

    /// Stores `modules` in order, each as `insert` does, in few statements for all of them. Returns
    /// for each why it was rejected, as the text of the exception that `insert` would throw;
    /// nothing for one that is stored. Without a transaction it is one of its own. Throws if the
    /// database fails; nothing is stored then, and a transaction is lost.
    std::vector<std::optional<std::string>> insertAll(const std::vector<ModuleToStore>& modules);

    /// Returns the record with the module identifier text `moduleId`, if there is one.
    std::optional<DeviceProperties> find(const std::string& moduleId);

    /// Returns every record, ordered by family and module identifier.
    std::vector<DeviceProperties> list();

    /// Returns the modules that match `query`, in its order. Throws if a condition names an unknown
    /// field or a value that the field cannot have.
    std::vector<ModuleSummary> search(const ModuleQuery& query);

    /// The same for a part of the result. Throws `NotInList` if there is no module
    /// `PagedQuery::after` in it.
    std::vector<ModuleSummary> searchPage(const PagedQuery& query);

    /// As above; calls `take` with each module as soon as it is found, until it returns false.
    /// `take` must not use this object.
    void searchPage(const PagedQuery& query, const std::function<bool(const ModuleSummary&)>& take);

    /// Returns how `query` is carried out, for people who wonder why it takes its time.
    SearchExplanation explain(const PagedQuery& query);

    /// Counts the modules.
    ModuleCounts counts();

    /// Calls `visitor` for the record of each of `modules` that still exists, in their order. Reads
    /// them in groups of up to 64.
    void visit(const std::vector<ModuleSummary>& modules,
               const std::function<void(const DeviceProperties&)>& visitor);

    /// The same with the content of the module, which is null if the catalogue does not have it.
    void visitWithContent(
        const std::vector<ModuleSummary>& modules,
        const std::function<void(const DeviceProperties&, const ModuleContent*)>& visitor);

    /// Returns the content of the module, if the catalogue has it.
    std::optional<ModuleContent> content(const std::string& family, const std::string& moduleId);

    /// Removes the record with the module identifier text `moduleId`. Returns whether there was
    /// one.
    bool remove(const std::string& moduleId);

    /// Removes the record of one family.
    bool remove(const std::string& family, const std::string& moduleId);

    /// Removes `modules`, all or, if it throws, none. Returns how many of them there were.
    std::size_t removeAll(const std::vector<ModuleSummary>& modules);

    /// Starts a transaction, waiting for other writers. The database must outlive it; transactions
    /// do not nest.
    Transaction beginTransaction();

private:
    std::unique_ptr<RecordStore> store;
};

/// Chooses and opens the database for `insertDeviceProperties` in this process.
DEVICE_DATABASE_API void useDatabase(const std::string& url);

/// Returns the URL used by default: that of the environment variable `DEVICE_DATABASE_URL`, else
/// "sqlite:devices.sqlite".
DEVICE_DATABASE_API std::string defaultDatabaseUrl();

/// Returns the database chosen with `useDatabase`, or the one at `defaultDatabaseUrl`, which is
/// then opened. It lives until the next `useDatabase`.
DEVICE_DATABASE_API DeviceDatabase& usedDatabase();

/// Stores `record` in the used database, or calls the insertion chosen with `insertThrough`. The
/// device parser calls this for each mx file.
DEVICE_DATABASE_API void insertDeviceProperties(DeviceProperties& record);

/// Makes `insertDeviceProperties` call `insertion` instead of storing the record, until it is
/// called with an empty function. For a host that stores more than the record for each module, or
/// elsewhere.
DEVICE_DATABASE_API void insertThrough(std::function<void(DeviceProperties&)> insertion);

} // namespace devices::database
