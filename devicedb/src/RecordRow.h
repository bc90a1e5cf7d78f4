#pragma once

#include "RowStatement.h"
#include "SqlDialect.h"

#include "devices/database/DeviceProperties.h"

#include <Poco/Data/LOB.h>
#include <Poco/Data/Statement.h>

namespace devices::database {

/// Both drivers hand bytes over with their length, SQLite as they are and libpq in its binary form,
/// and give them back with every byte; the text form of a bytea is never written.
Poco::Data::BLOB toBlob(const std::string& text);
std::string toText(const Poco::Data::BLOB& blob);

/// Returns the value of a column of bytes: the SQLite driver binds empty ones as NULL.
RowSql::Value bytesValue(const SqlDialect& dialect);

/// Returns the statement that stores rows of records, over those of the same key.
RowSql recordInsertion(const SqlDialect& dialect);

/// Returns the row of `record` for `recordInsertion`. Texts are stored as bytes: they may hold any
/// byte, NUL included.
RowStatement::Row toRow(const DeviceProperties& record);

/// Selects the columns of a record.
extern const char* const recordSelect;

/// Runs `select` (prepared to give the columns of `recordSelect`) and returns its records.
std::vector<DeviceProperties> fetchRecords(Poco::Data::Statement& select);

} // namespace devices::database
