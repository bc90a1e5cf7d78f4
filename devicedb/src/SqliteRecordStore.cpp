#include "SqliteRecordStore.h"

#include "SqliteSchema.h"

#include <Poco/Data/LOB.h>
#include <Poco/Data/RecordSet.h>
#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/Statement.h>

#include <stdexcept>

namespace devices::database {

using namespace Poco::Data::Keywords;
using Poco::Data::BLOB;

namespace {

constexpr const char* busyTimeout = "PRAGMA busy_timeout = 5000"; // milliseconds

[[noreturn]] void fail(const std::string& database, const std::string& attempted,
                       const std::string& reason)
{
    throw std::runtime_error("Cannot " + attempted + " device database " + database + ": " +
                             reason);
}

// What the driver says, without the name of its exception class.
std::string reasonOf(const Poco::Exception& failure)
{
    const std::string& message = failure.message();
    return message.empty() ? failure.what() : message;
}

Poco::Data::Session openSession(const std::string& path, const std::string& name)
{
    try {
        // The driver would try a file that cannot be opened again and again, for a minute.
        constexpr std::size_t noRetry = 0;
        return Poco::Data::Session(Poco::Data::SQLite::Connector().createSession(path, noRetry));
    } catch (const Poco::Exception& failure) {
        fail(name, "open", reasonOf(failure));
    }
}

BLOB toBlob(const std::string& text)
{
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

BLOB toBlob(const DeviceProperties::Bytes& bytes)
{
    if (bytes.isNull()) {
        return {};
    }
    return {reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size()};
}

std::string toText(const BLOB& blob)
{
    return {blob.begin(), blob.end()};
}

DeviceProperties::Bytes toBytes(const BLOB& blob)
{
    return new std::vector<char>(blob.begin(), blob.end());
}

// One row of the table. Texts are stored as bytes: they may hold any byte, NUL included.
struct Row
{
    BLOB family;
    BLOB moduleId;
    BLOB brandLabelName;
    BLOB text4;
    BLOB text5;
    BLOB hostBytes;
    BLOB mxFileData;
    BLOB defaultParameterBlock;
    Poco::Int64 inDataSize = 0;
    Poco::Int64 outDataSize = 0;
};

Row toRow(const DeviceProperties& record)
{
    return {toBlob(record.family),
            toBlob(record.moduleIdText),
            toBlob(record.brandLabelName),
            toBlob(record.text4),
            toBlob(record.text5),
            toBlob(record.hostBytes),
            toBlob(record.mxFileData),
            toBlob(record.defaultParameterBlock),
            record.inDataSize,
            record.outDataSize};
}

DeviceProperties toRecord(const Row& row)
{
    DeviceProperties record;
    record.family = toText(row.family);
    record.moduleIdText = toText(row.moduleId);
    record.brandLabelName = toText(row.brandLabelName);
    record.text4 = toText(row.text4);
    record.text5 = toText(row.text5);
    record.hostBytes = toBytes(row.hostBytes);
    record.mxFileData = toBytes(row.mxFileData);
    record.defaultParameterBlock = toBytes(row.defaultParameterBlock);
    record.inDataSize = static_cast<std::uint32_t>(row.inDataSize);
    record.outDataSize = static_cast<std::uint32_t>(row.outDataSize);
    return record;
}

// Runs `select` (prepared to give the columns of a record, row by row) and returns its records.
std::vector<DeviceProperties> fetch(Poco::Data::Statement& select)
{
    Row row;
    select, into(row.family), into(row.moduleId), into(row.brandLabelName), into(row.text4),
        into(row.text5), into(row.hostBytes), into(row.mxFileData), into(row.defaultParameterBlock),
        into(row.inDataSize), into(row.outDataSize), range(0, 1);
    std::vector<DeviceProperties> records;
    while (!select.done()) {
        if (select.execute() != 0) {
            records.push_back(toRecord(row));
        }
    }
    return records;
}

} // namespace

SqliteRecordStore::SqliteRecordStore(const std::string& path)
    : name("sqlite:" + path), session(openSession(path, name))
{
    attempt("open", [this] { prepareSchema(); });
}

template <typename Work>
auto SqliteRecordStore::attempt(const char* attempted, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const Poco::Exception& failure) {
        fail(name, attempted, reasonOf(failure));
    }
}

void SqliteRecordStore::execute(const std::string& sql)
{
    session << sql, now;
}

void SqliteRecordStore::prepareSchema()
{
    execute(busyTimeout);
    if (readSchemaVersion() == sqliteSchemaVersion) {
        return;
    }
    // Another process may have prepared the schema meanwhile: look again, behind the lock.
    begin();
    try {
        migrateFrom(readSchemaVersion());
        commit();
    } catch (...) {
        rollback();
        throw;
    }
}

// Returns 0 for an empty database.
int SqliteRecordStore::readSchemaVersion()
{
    int tables = 0;
    int versionTables = 0;
    session << "SELECT count(*), coalesce(sum(name = 'schema_version'), 0) FROM sqlite_master",
        into(tables), into(versionTables), now;
    if (tables == 0) {
        return 0;
    }
    if (versionTables == 0) {
        fail(name, "open", "it holds other tables, expected a device database or an empty file");
    }
    int version = 0;
    session << "SELECT version FROM schema_version", into(version), now;
    if (version > sqliteSchemaVersion) {
        fail(name, "open",
             "its schema has version " + std::to_string(version) + ", this library knows " +
                 std::to_string(sqliteSchemaVersion) + " at most");
    }
    return version;
}

void SqliteRecordStore::migrateFrom(int version)
{
    for (; version < sqliteSchemaVersion; ++version) {
        for (const char* statement : sqliteMigrations[version]) {
            execute(statement);
        }
    }
    execute("DELETE FROM schema_version");
    execute("INSERT INTO schema_version (version) VALUES (" + std::to_string(version) + ")");
}

void SqliteRecordStore::begin()
{
    attempt("change", [this] { execute("BEGIN IMMEDIATE"); });
}

void SqliteRecordStore::commit()
{
    attempt("change", [this] { execute("COMMIT"); });
}

void SqliteRecordStore::rollback()
{
    attempt("change", [this] { execute("ROLLBACK"); });
}

void SqliteRecordStore::insert(const DeviceProperties& record)
{
    Row row = toRow(record);
    attempt("write to", [&] {
        session << sqliteInsert, use(row.family), use(row.moduleId), use(row.brandLabelName),
            use(row.text4), use(row.text5), use(row.hostBytes), use(row.mxFileData),
            use(row.defaultParameterBlock), use(row.inDataSize), use(row.outDataSize), now;
    });
}

std::optional<DeviceProperties> SqliteRecordStore::find(const std::string& moduleId)
{
    BLOB id = toBlob(moduleId);
    return attempt("read", [&]() -> std::optional<DeviceProperties> {
        Poco::Data::Statement select(session);
        select << std::string(sqliteSelect) + " WHERE module_id = ? ORDER BY family LIMIT 1",
            use(id);
        const auto records = fetch(select);
        return records.empty() ? std::nullopt : std::optional(records.front());
    });
}

std::vector<DeviceProperties> SqliteRecordStore::list()
{
    return attempt("read", [&] {
        Poco::Data::Statement select(session);
        select << std::string(sqliteSelect) + " ORDER BY family, module_id";
        return fetch(select);
    });
}

bool SqliteRecordStore::remove(const std::string& moduleId)
{
    BLOB id = toBlob(moduleId);
    return attempt("write to", [&] {
        Poco::Data::Statement deletion(session);
        deletion << "DELETE FROM device_properties WHERE module_id = ?", use(id);
        return deletion.execute() != 0;
    });
}

} // namespace devices::database
