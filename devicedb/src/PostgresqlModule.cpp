#include "PostgresqlModule.h"
#include "PostgresqlConnection.h"
#include "PostgresqlRecordStore.h"

// The two names that libdevice-database-postgresql.so exports.
extern "C" {

__attribute__((visibility("default"))) extern const int postgresqlRecordStoreVersion =
    devices::database::postgresqlModuleVersion;

__attribute__((visibility("default"))) devices::database::RecordStore*
openPostgresqlRecordStore(const std::string& words, devices::database::OpenMode mode,
                          unsigned patience)
{
    return new devices::database::PostgresqlRecordStore(
        devices::database::PostgresqlConnection(words), mode, patience);
}
}
