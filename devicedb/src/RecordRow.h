#pragma once

#include "SqlConnection.h"

#include "devices/database/DeviceDatabase.h"

namespace devices::database {

/// Returns the statement that stores rows of records, replacing those of the same key.
RowSql recordInsertion();

/// Returns the rows of the records of `modules` for `recordInsertion`. Texts are stored as bytes:
/// they may hold any byte, NUL included.
std::vector<RowStatement::Row> recordRows(const std::vector<ModuleToStore>& modules);

/// Returns the keys of `modules` as rows: family and module identifier.
std::vector<RowStatement::Row> keysOf(const std::vector<ModuleToStore>& modules);
std::vector<RowStatement::Row> keysOf(const std::vector<ModuleSummary>& modules);

/// Selects the columns of a record.
extern const char* const recordSelect;

/// Runs `select`, which begins with `recordSelect`, and returns its records.
std::vector<DeviceProperties> fetchRecords(SqlConnection& connection, const std::string& select,
                                           const std::vector<SqlParameter>& parameters);

/// Returns the records of `keys`, rows of family and module identifier, in any order.
std::vector<DeviceProperties> fetchRecords(SqlConnection& connection,
                                           const std::vector<RowStatement::Row>& keys);

} // namespace devices::database
