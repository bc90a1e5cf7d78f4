#pragma once

#include "ContentTables.h"
#include "SearchTables.h"
#include "SqlConnection.h"

#include "devices/database/DeviceDatabase.h"

#include <memory>
#include <vector>

namespace devices::database {

/// All tables of modules: what is written when modules are stored, and when they are removed. One
/// statement for each table, however many modules there are. Whatever fails is a `SqlFailure`, and
/// the object cannot be used afterwards.
class ModuleTables
{
public:
    explicit ModuleTables(SqlConnection& connection);

    /// Stores `modules`, which have different keys, replacing those of the same keys.
    void store(const std::vector<ModuleToStore>& modules);

    /// Removes the modules of `keys`: rows of family and module identifier. Returns how many there
    /// were.
    std::size_t remove(const std::vector<RowStatement::Row>& keys);

private:
    std::unique_ptr<RowStatement> insertion;
    std::unique_ptr<RowStatement> deletion;
    ContentTables content;
    SearchTables search;
};

} // namespace devices::database
