#pragma once

#include "SqlConnection.h"

#include "devices/database/DeviceProperties.h"

namespace devices::database {

/// Returns the value of a column of bytes: the SQLite driver binds empty ones as NULL.
RowSql::Value bytesValue(const SqlDialect& dialect);

/// Returns the statement that stores rows of records, replacing those of the same key.
RowSql recordInsertion(const SqlDialect& dialect);

/// Returns the row of `record` for `recordInsertion`. Texts are stored as bytes: they may hold any
/// byte, NUL included.
RowStatement::Row toRow(const DeviceProperties& record);

/// Selects the columns of a record.
extern const char* const recordSelect;

/// Runs `select`, which begins with `recordSelect`, and returns its records.
std::vector<DeviceProperties> fetchRecords(SqlConnection& connection, const std::string& select,
                                           const std::vector<SqlParameter>& parameters);

} // namespace devices::database
