#pragma once

#include "devices/database/DeviceDatabase.h"

#include <functional>

namespace devices::database {

/// A module as it is stored.
struct StoredModule
{
    DeviceProperties record;
    std::optional<ModuleContent> content;
};

/// The interface of a database engine for `DeviceDatabase`; one implementation per engine.
///
/// An object is one connection, used by one thread at a time. Failures are a `std::runtime_error`
/// whose text names the database and is meant for users; a failed change leaves the database
/// unchanged, and an open transaction open. If the engine has aborted the whole transaction,
/// `insert`, `remove` and `commit` fail until `rollback`, so that nothing is stored outside its
/// transaction.
class RecordStore
{
public:
    RecordStore() = default;
    virtual ~RecordStore() = default;
    RecordStore(const RecordStore&) = delete;
    RecordStore& operator=(const RecordStore&) = delete;

    /// Returns the name of the database in messages, without passwords.
    virtual const std::string& name() const = 0;

    /// Starts a transaction, waiting for other writers first. Transactions do not nest.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// Returns whether a transaction was begun, not ended since, and is still open in the engine.
    virtual bool isTransactionAlive() = 0;

    /// Stores `module`, replacing the one of the same family and module identifier.
    virtual void insert(const ModuleToStore& module) = 0;

    /// Stores `modules` in order. Returns for each why it alone was rejected, if it was.
    virtual std::vector<std::optional<std::string>>
    insertAll(const std::vector<ModuleToStore>& modules) = 0;

    /// Returns the record of the module identifier text; of several families the first.
    virtual std::optional<DeviceProperties> find(const std::string& moduleId) = 0;

    /// Returns those of `modules` that exist, in any order, without their content.
    virtual std::vector<StoredModule> findAll(const std::vector<ModuleSummary>& modules) = 0;

    /// The same with their content, where it is stored.
    virtual std::vector<StoredModule>
    findAllWithContent(const std::vector<ModuleSummary>& modules) = 0;

    /// Returns all records, ordered bytewise by family and module identifier.
    virtual std::vector<DeviceProperties> list() = 0;

    /// Calls `take` with the modules that match `query`, in its order, until it returns false.
    /// After a lost connection it calls `forget` and begins again; without `forget` only if `take`
    /// was not called.
    virtual void search(const PagedQuery& query,
                        const std::function<bool(const ModuleSummary&)>& take,
                        const std::function<void()>& forget) = 0;

    /// Returns how `search` finds them.
    virtual SearchExplanation explain(const PagedQuery& query) = 0;

    /// Counts the modules.
    virtual ModuleCounts counts() = 0;

    /// Returns the content that was stored with the record, if any.
    virtual std::optional<ModuleContent> content(const std::string& family,
                                                 const std::string& moduleId) = 0;

    /// Removes the records of the module identifier text and their content. Returns whether there
    /// was one.
    virtual bool remove(const std::string& moduleId) = 0;

    /// Removes `modules`. Returns how many of them there were.
    virtual std::size_t removeAll(const std::vector<ModuleSummary>& modules) = 0;
};

/// Opens the store that `url` names, see `DeviceDatabase`.
std::unique_ptr<RecordStore> openRecordStore(const std::string& url, OpenMode mode);

} // namespace devices::database
