#include "StoredSize.h"

#include <Poco/Data/Session.h>
#include <Poco/Data/Statement.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

namespace {

using namespace Poco::Data::Keywords;
using testkit::Engine;

constexpr const char* sqliteTables =
    "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'";
constexpr const char* serverTables =
    "SELECT table_name::text FROM information_schema.tables WHERE table_schema = current_schema()";
constexpr const char* serverBytes =
    "SELECT CAST(sum(pg_total_relation_size(c.oid)) AS BIGINT) FROM pg_class c"
    " JOIN pg_namespace n ON n.oid = c.relnamespace"
    " WHERE n.nspname = current_schema() AND c.relkind = 'r'";

} // namespace

StoredSize storedSize(const testkit::TestDatabase& database)
{
    const bool isFile = database.engine() == Engine::Sqlite;
    Poco::Data::Session session = database.otherProgram();
    std::vector<std::string> tables;
    session << (isFile ? sqliteTables : serverTables), into(tables), now;
    StoredSize size;
    for (const std::string& table : tables) {
        Poco::Int64 rows = 0;
        session << "SELECT count(*) FROM " + table, into(rows), now;
        size.rows += static_cast<std::uint64_t>(rows);
    }
    if (isFile) {
        const std::string prefix = "sqlite:";
        size.bytes = std::filesystem::file_size(database.url().substr(prefix.size()));
    } else {
        Poco::Int64 bytes = 0;
        session << serverBytes, into(bytes), now;
        size.bytes = static_cast<std::uint64_t>(bytes);
    }
    return size;
}

} // namespace bench
