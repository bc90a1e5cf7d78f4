#pragma once

#include <vector>

namespace devices::database {

/// The statements that lead from one schema version to the next: entry n makes version n + 1, and
/// version 0 is an empty database. A released entry never changes; a new version is a new entry.
extern const std::vector<std::vector<const char*>> sqliteMigrations;

/// The schema version that this library reads and writes.
extern const int sqliteSchemaVersion;

/// Stores one record; the columns in the order of `sqliteSelect`.
extern const char* const sqliteInsert;

/// Selects the columns of a record.
extern const char* const sqliteSelect;

} // namespace devices::database
