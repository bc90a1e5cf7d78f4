#include "PostgresqlModule.h"

#include "DatabaseFailure.h"
#include "PostgresqlConnection.h"
#include "PostgresqlWords.h"
#include "SqlRecordStore.h"

// The two names that libdevice-database-postgresql.so exports.
extern "C" {

__attribute__((visibility("default"))) extern const int postgresqlRecordStoreVersion =
    devices::database::postgresqlModuleVersion;

__attribute__((visibility("default"))) devices::database::RecordStore*
openPostgresqlRecordStore(const std::string& words, devices::database::OpenMode mode,
                          unsigned patience)
{
    using namespace devices::database;
    const PostgresqlWords connectionWords(words);
    const std::string name = connectionWords.name();
    try {
        auto connection = std::make_unique<PostgresqlConnection>(
            connectionWords, connectionWords.accessToOpen(mode), patience);
        return new SqlRecordStore(name, std::move(connection), mode);
    } catch (const SqlFailure& failure) {
        fail(name, "open", failure.what());
    }
}
}
