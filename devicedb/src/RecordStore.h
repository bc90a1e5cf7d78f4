#pragma once

#include "devices/database/DeviceProperties.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// What a database engine does for `DeviceDatabase`; one implementation per engine.
///
/// An object is one connection, used by one thread at a time. Whatever fails is a
/// `std::runtime_error` whose text names the database and is fit for a person; a failed change
/// leaves the database as it was, and an open transaction open. Where the engine has given the
/// whole transaction up, `insert`, `remove` and `commit` fail until `rollback`, so that nothing
/// lands outside the transaction it was meant for.
class RecordStore
{
public:
    RecordStore() = default;
    virtual ~RecordStore() = default;
    RecordStore(const RecordStore&) = delete;
    RecordStore& operator=(const RecordStore&) = delete;

    /// Starts a transaction, waiting for other writers first. Transactions do not nest.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;

    /// Stores `record` in one statement; the one of the same family and module identifier goes.
    virtual void insert(const DeviceProperties& record) = 0;

    /// Returns the record of the module identifier text; of several families the first.
    virtual std::optional<DeviceProperties> find(const std::string& moduleId) = 0;

    /// Returns all records, ordered bytewise by family and module identifier.
    virtual std::vector<DeviceProperties> list() = 0;

    /// Removes the records of the module identifier text. Returns whether there was one.
    virtual bool remove(const std::string& moduleId) = 0;
};

/// Opens the store that `url` names, see `DeviceDatabase`.
std::unique_ptr<RecordStore> openRecordStore(const std::string& url);

} // namespace devices::database
