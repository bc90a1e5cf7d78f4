#include "SqliteRecordStore.h"

#include "SqliteFile.h"
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

// A commit is the removal of the journal file: EXTRA synchronises the directory too, so that a
// power cut cannot bring the journal back and undo the transaction with it.
constexpr const char* durability = "PRAGMA synchronous = EXTRA";

// The driver binds an empty blob as NULL, which equals nothing.
constexpr const char* ofModule = " WHERE module_id = coalesce(?, x'')";

[[noreturn]] void fail(const std::string& database, const std::string& attempted,
                       const std::string& reason)
{
    throw std::runtime_error("Cannot " + attempted + " device database " + database + ": " +
                             reason);
}

// What the driver says, without the name of its exception class, and once where it says
// "reason: reason".
std::string reasonOf(const Poco::Exception& failure)
{
    const std::string& message = failure.message();
    if (message.empty()) {
        return failure.what();
    }
    const std::string half = message.substr(0, (message.size() - 1) / 2);
    return message == half + ": " + half ? half : message;
}

Poco::Data::Session openSession(const std::string& path, const std::string& name)
{
    try {
        // The driver would try a file that cannot be opened again and again, for a minute.
        constexpr std::size_t noRetry = 0;
        return Poco::Data::Session(
            Poco::Data::SQLite::Connector().createSession(sqliteFileName(path), noRetry));
    } catch (const Poco::Exception&) {
        fail(name, "open", whyNotOpened(path));
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
    execute(durability);
    if (readSchemaVersion() == sqliteSchemaVersion) {
        return;
    }
    // Another process may have prepared the schema meanwhile: look again, behind the lock.
    execute("BEGIN IMMEDIATE");
    try {
        migrateFrom(readSchemaVersion());
        execute("COMMIT");
    } catch (...) {
        rollback();
        throw;
    }
}

// Returns 0 for an empty database.
int SqliteRecordStore::readSchemaVersion()
{
    int tables = 0;
    int ownTables = 0;
    session << "SELECT count(*), coalesce(sum(name IN ('schema_version', 'device_properties')), 0)"
               " FROM sqlite_master",
        into(tables), into(ownTables), now;
    if (tables == 0) {
        return 0;
    }
    if (ownTables != 2) {
        fail(name, "open", "it holds other tables, expected a device database or an empty file");
    }
    int version = 0;
    session << "SELECT coalesce(max(version), 0) FROM schema_version", into(version), now;
    if (version < 1) {
        fail(name, "open",
             "its table schema_version states version " + std::to_string(version) +
                 ", expected 1 or above");
    }
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
        for (const char* statement : sqliteMigrations[static_cast<std::size_t>(version)]) {
            execute(statement);
        }
    }
    execute("DELETE FROM schema_version");
    execute("INSERT INTO schema_version (version) VALUES (" + std::to_string(version) + ")");
}

void SqliteRecordStore::begin()
{
    attempt("change", [this] { execute("BEGIN IMMEDIATE"); });
    inTransaction = true;
}

void SqliteRecordStore::commit()
{
    requireTransaction();
    attempt("change", [this] { execute("COMMIT"); });
    inTransaction = false;
}

void SqliteRecordStore::rollback()
{
    inTransaction = false;
    if (!session.getFeature("autoCommit")) {
        attempt("change", [this] { execute("ROLLBACK"); });
    }
}

// After some failures, a full disk for one, SQLite has rolled the whole transaction back by itself;
// what follows would be stored outside of it, each change for good.
void SqliteRecordStore::requireTransaction()
{
    if (inTransaction && session.getFeature("autoCommit")) {
        fail(name, "change", "its transaction was taken back after an earlier failure");
    }
}

void SqliteRecordStore::insert(const DeviceProperties& record)
{
    requireTransaction();
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
        select << std::string(sqliteSelect) + ofModule + " ORDER BY family LIMIT 1", use(id);
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
    requireTransaction();
    BLOB id = toBlob(moduleId);
    return attempt("write to", [&] {
        Poco::Data::Statement deletion(session);
        deletion << std::string("DELETE FROM device_properties") + ofModule, use(id);
        return deletion.execute() != 0;
    });
}

} // namespace devices::database
