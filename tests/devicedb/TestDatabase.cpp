#include "TestDatabase.h"

#include "PooledDatabases.h"

#include <Poco/Data/PostgreSQL/Connector.h>
#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/Statement.h>

#include <unistd.h>

namespace testkit {

namespace {

Poco::Data::Session serverSession(const std::string& words = testServer())
{
    return Poco::Data::Session(Poco::Data::PostgreSQL::Connector().createSession(words));
}

std::string newSchemaName()
{
    static int count = 0;
    return "test_" + std::to_string(getpid()) + "_" + std::to_string(++count);
}

} // namespace

// On the server each test has a schema of its own: that costs far less than a database. A pooler
// does not pass `options` on: there it is a database that tests use one after the other.
TestDatabase::TestDatabase(Engine engine) : kind(engine)
{
    if (kind == Engine::Sqlite) {
        directory.emplace();
        databaseUrl = "sqlite:" + directory->path("devices.sqlite");
        return;
    }
    if (kind == Engine::Pooled) {
        pooledDatabase = takePooledDatabase();
        databaseUrl = "postgresql:" + testPooler() + " dbname=" + pooledDatabase;
        return;
    }
    schema = newSchemaName();
    serverSession() << "CREATE SCHEMA " + schema, Poco::Data::Keywords::now;
    databaseUrl = "postgresql:" + testServer() + " options=-csearch_path=" + schema;
}

TestDatabase::~TestDatabase()
{
    if (kind == Engine::Postgresql) {
        try {
            serverSession() << "SET client_min_messages = error; DROP SCHEMA " + schema +
                                   " CASCADE",
                Poco::Data::Keywords::now;
        } catch (const std::exception&) {
            // A test may have stopped the server.
        }
    } else if (kind == Engine::Pooled) {
        giveBackPooledDatabase(pooledDatabase);
    }
}

std::string TestDatabase::name() const
{
    if (kind == Engine::Sqlite) {
        return databaseUrl;
    }
    const std::string words = testServer();
    const auto host = words.find("host=");
    return "postgresql:" + words.substr(host, words.find(' ', host) - host) +
           " dbname=" + (kind == Engine::Pooled ? pooledDatabase : "postgres");
}

Poco::Data::Session TestDatabase::otherProgram() const
{
    if (kind == Engine::Sqlite) {
        constexpr std::size_t noRetry = 0;
        return Poco::Data::Session(Poco::Data::SQLite::Connector().createSession(
            directory->path("devices.sqlite"), noRetry));
    }
    if (kind == Engine::Pooled) {
        return serverSession(testServer() + " dbname=" + pooledDatabase);
    }
    Poco::Data::Session session = serverSession();
    session << "SET search_path = " + schema, Poco::Data::Keywords::now;
    return session;
}

void TestDatabase::execute(const std::string& statement) const
{
    otherProgram() << statement, Poco::Data::Keywords::now;
}

void TestDatabase::becomeVersion(int version) const
{
    for (const char* const table :
         {"search_new", "search_modules", "search_blocks", "search_members", "search_parts"}) {
        execute(std::string("DROP TABLE ") + table);
    }
    if (kind == Engine::Sqlite) {
        execute("DROP TRIGGER library_is_older_than_schema");
    }
    if (kind != Engine::Sqlite) {
        execute("ALTER TABLE channels ADD CONSTRAINT channels_family_module_fkey"
                " FOREIGN KEY (family, module) REFERENCES modules (family, module)"
                " ON DELETE CASCADE");
        execute("ALTER TABLE parameters ADD CONSTRAINT parameters_family_module_fkey"
                " FOREIGN KEY (family, module) REFERENCES modules (family, module)"
                " ON DELETE CASCADE");
        execute("ALTER TABLE options ADD CONSTRAINT options_family_module_parameter_position_fkey"
                " FOREIGN KEY (family, module, parameter_position)"
                " REFERENCES parameters (family, module, position) ON DELETE CASCADE");
    }
    execute("ALTER TABLE device_properties DROP COLUMN written_by");
    execute("UPDATE schema_version SET version = " + std::to_string(version));
}

void TestDatabase::refuseModuleBad() const
{
    execute(kind == Engine::Sqlite ? "CREATE TRIGGER refuse BEFORE INSERT ON device_properties"
                                     " WHEN NEW.module_id = CAST('bad' AS BLOB)"
                                     " BEGIN SELECT RAISE(ABORT, 'refused'); END"
                                   : "ALTER TABLE device_properties ADD CONSTRAINT refuse"
                                     " CHECK (module_id <> CAST('bad' AS BYTEA))");
}

std::string TestDatabase::refusal() const
{
    return kind == Engine::Sqlite ? "refused"
                                  : "new row for relation \"device_properties\" violates check "
                                    "constraint \"refuse\"";
}

} // namespace testkit
