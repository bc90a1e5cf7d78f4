#pragma once

#include "SqlConnection.h"

#include "devices/database/DeviceDatabase.h"

#include <string>

namespace devices::database {

/// The schema of an open database: its version, its creation, its migration.
class DatabaseSchema
{
public:
    /// `databaseName` is that in messages. Both must outlive the object.
    DatabaseSchema(const std::string& databaseName, SqlConnection& openConnection)
        : shownName(databaseName), connection(openConnection)
    {}

    /// Creates or migrates the schema according to `mode`. One that can only be read stays at its
    /// version, if that has a catalogue. Throws a `SqlFailure`, or a `std::runtime_error` that
    /// names the database if that is of a newer version or holds something else.
    void prepare(OpenMode mode);

    /// Returns the version that the database has since `prepare`.
    int version() const { return found; }

    /// Throws a `SqlFailure` if the version is not the newest: nothing can be stored then.
    void requireNewest() const;

private:
    int readVersion();
    void migrate(int attempts);
    void migrateFrom(int version);
    void migrateUnlessReadable(int version, OpenMode mode);
    void rollBack();

    const std::string& shownName;
    SqlConnection& connection;
    int found = 0;
    std::string whyNotMigrated;
    SqlFailure::Concern concernOfChanges = SqlFailure::Concern::Change;
};

} // namespace devices::database
