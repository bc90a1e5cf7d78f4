#pragma once

#include "SqlConnection.h"

namespace devices::database {

/// Returns the statements that migrate one schema version to the next: entry n creates version n +
/// 1, and version 0 is an empty database. A released entry never changes; a new version is a new
/// entry.
std::vector<std::vector<std::string>> sqlMigrations(const SqlDialect& dialect);

/// Returns the statements which end the migration to version 4, after its tables are filled:
/// records of an older library are refused from then on, and foreign keys that cost much are
/// dropped. In PostgreSQL they wait for those who read, and those who read wait for them.
std::vector<std::string> sqlEndingVersion4(const SqlDialect& dialect);

/// The schema version that this library reads and writes.
extern const int schemaVersion;

/// The oldest version with a catalogue: a database that may only be read is read at it.
inline constexpr int readableVersion = 2;

/// The first version with the tables of searches.
inline constexpr int versionOfSearchTables = 4;

} // namespace devices::database
