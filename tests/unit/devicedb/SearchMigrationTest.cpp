#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <thread>

namespace {

using devices::database::Comparison;
using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::database::ModuleToStore;
using devices::database::SearchExplanation;
using Poco::Data::Keywords::into;
using Poco::Data::Keywords::now;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::failureOf;

// A database of version 2 or 3, with more modules than are kept out of the index.
class SearchMigration : public testkit::OnEachEngine
{
protected:
    static constexpr int moduleCount = 300;

    SearchMigration()
    {
        std::vector<DeviceProperties> records;
        std::vector<ModuleContent> contents;
        for (int number = 1000; number < 1000 + moduleCount; ++number) {
            records.push_back(device(std::to_string(number)));
            contents.push_back(contentNamed("N" + std::to_string(number)));
        }
        std::vector<ModuleToStore> modules;
        for (std::size_t i = 0; i < records.size(); ++i) {
            modules.push_back({&records[i], &contents[i]});
        }
        DeviceDatabase database(url);
        database.insertAll(modules);
        database.insert(device("2000")); // without content
    }

    // As the insertion of the library of version 3.
    void insertAsVersion3(const std::string& id) const
    {
        const std::string bytes = place.engine() == testkit::Engine::Sqlite ? "BLOB" : "BYTEA";
        place.execute("INSERT INTO device_properties (family, module_id, brand_label_name, text4,"
                      " text5, host_bytes, mx_file_data, default_parameter_block, in_data_size,"
                      " out_data_size) VALUES (CAST('kv38' AS " +
                      bytes + "), CAST('" + id + "' AS " + bytes +
                      "), '', '', '', '', '', '', 0, 0) ON CONFLICT (family, module_id)"
                      " DO UPDATE SET brand_label_name = excluded.brand_label_name");
    }

    std::vector<std::string> found(const std::vector<std::string>& words) const
    {
        return moduleIds(DeviceDatabase(url).search({words, {}}));
    }
};

RUN_ON_EACH_ENGINE(SearchMigration);

TEST_P(SearchMigration, FillsTheTablesOfSearches)
{
    for (const int version : {2, 3}) {
        place.becomeVersion(version);
        EXPECT_THAT(found({"n1205"}), ElementsAre("1205"));
        EXPECT_THAT(found({"hz", "label n129"}),
                    ElementsAre("1290", "1291", "1292", "1293", "1294", "1295", "1296", "1297",
                                "1298", "1299"));
        EXPECT_EQ(found({"order"}).size(), 300U);
        DeviceDatabase database(url);
        const auto explained = database.explain({{{"n1205"}, {}}});
        EXPECT_EQ(explained.source, SearchExplanation::Source::Index);
        EXPECT_EQ(explained.blocks, 1U);
        EXPECT_EQ(explained.notIndexed, 0U);
    }
}

TEST_P(SearchMigration, KeepsModulesWithoutContent)
{
    place.becomeVersion(3);
    DeviceDatabase database(url);
    EXPECT_THAT(moduleIds(database.search({{}, {{"channels", Comparison::Equal, "0"}}})),
                ElementsAre("2000"));
    EXPECT_EQ(database.search({{}, {{"in_bytes", Comparison::Equal, "2"}}}).size(), 301U);
    EXPECT_EQ(database
                  .search({{},
                           {{"unit", Comparison::Equal,
                             "\xC2\xB0"
                             "C"}}})
                  .size(),
              300U);
}

// A program that began to read before the migration; PostgreSQL waits for it at the end.
TEST_P(SearchMigration, LetsOthersRead)
{
    place.becomeVersion(3);
    Poco::Data::Session reader = place.otherProgram();
    const auto modulesRead = [&reader] {
        int count = 0;
        reader << "SELECT count(*) FROM modules WHERE search_text LIKE '%n12%'", into(count), now;
        return count;
    };
    reader.begin();
    EXPECT_EQ(modulesRead(), 100);
    std::thread migration([this] { DeviceDatabase{url}; });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(modulesRead(), 100);
    reader.commit();
    migration.join();
    EXPECT_EQ(modulesRead(), 100);
    EXPECT_THAT(found({"n1205"}), ElementsAre("1205"));
}

// Once, as every change does: ten times the stated seconds would look like a program that hangs.
TEST_P(SearchMigration, WaitsForAWriterAsLongAsStated)
{
    place.becomeVersion(3);
    Poco::Data::Session writer = place.otherProgram();
    writer.begin();
    writer << "UPDATE schema_version SET version = version", now;
    setenv("DEVICE_DATABASE_WAIT", "1", 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(failureOf([this] { DeviceDatabase{url}; }),
                HasSubstr("its schema of version 3 cannot be migrated to version 4: "));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    unsetenv("DEVICE_DATABASE_WAIT");
    writer.rollback();
    EXPECT_THAT(found({"n1205"}), ElementsAre("1205"));
}

// Who only reads has the database as it is, instead of none.
TEST_P(SearchMigration, IsNotNeededToRead)
{
    place.becomeVersion(3);
    Poco::Data::Session writer = place.otherProgram();
    writer.begin();
    writer << "UPDATE schema_version SET version = version", now;
    setenv("DEVICE_DATABASE_WAIT", "1", 1);
    DeviceDatabase reader(url, devices::database::OpenMode::ExistingOnly);
    unsetenv("DEVICE_DATABASE_WAIT");
    EXPECT_EQ(moduleIds(reader.search({{"n1205"}, {}})), std::vector<std::string>{"1205"});
    EXPECT_THAT(failureOf([&] { reader.remove("1205"); }),
                HasSubstr("its schema of version 3 could not be migrated to version 4: "));
    writer.rollback();
    EXPECT_THAT(found({"n1205"}), ElementsAre("1205"));
}

// Else the migration would hold the other tables until it has the last one.
TEST_P(SearchMigration, LetsOthersReadWhileItWaitsForOne)
{
    place.becomeVersion(3);
    Poco::Data::Session slow = place.otherProgram();
    int count = 0;
    slow.begin();
    slow << "SELECT count(*) FROM options", into(count), now;
    auto migration = std::async(std::launch::async, [this] { DeviceDatabase{url}; });
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    place.otherProgram() << "SELECT count(*) FROM device_properties", into(count), now;
    slow << "SELECT count(*) FROM modules", into(count), now; // in another order than the library
    slow.commit();
    EXPECT_NO_THROW(migration.get());
    EXPECT_THAT(found({"n1205"}), ElementsAre("1205"));
}

// One state of the database, read table after table, as for the content of a module.
TEST_P(SearchMigration, LetsOthersReadAllTables)
{
    place.becomeVersion(3);
    Poco::Data::Session reader = place.otherProgram();
    const auto rowsOf = [&reader](const std::string& table) {
        int count = 0;
        reader << "SELECT count(*) FROM " + table, into(count), now;
        return count;
    };
    if (place.engine() != testkit::Engine::Sqlite) {
        reader << "SET deadlock_timeout = 10", now; // milliseconds; then this program fails first
    }
    reader.begin();
    EXPECT_EQ(rowsOf("modules"), 300);
    auto migration = std::async(std::launch::async, [this] { DeviceDatabase{url}; });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_EQ(rowsOf("channels"), 600);
    EXPECT_EQ(rowsOf("parameters"), 600);
    EXPECT_EQ(rowsOf("options"), 600);
    reader.commit();
    migration.get();
}

TEST_P(SearchMigration, TakesEveryRecord)
{
    DeviceProperties record = device("");
    record.family.clear();
    DeviceDatabase(url).insert(record);
    place.becomeVersion(3);
    place.execute("DELETE FROM parameters WHERE module = '1205'"); // in SQLite not their options
    EXPECT_EQ(DeviceDatabase(url).search({}).size(), 302U);
    EXPECT_THAT(found({"label n1205"}), ElementsAre("1205"));
}

TEST_P(SearchMigration, RefusesWritersOfAnOlderLibrary)
{
    for (const char* const id : {"1205", "3000"}) { // known and new
        EXPECT_THAT(failureOf([&] {
                        try {
                            insertAsVersion3(id);
                        } catch (const Poco::Exception& failure) {
                            throw std::runtime_error(failure.displayText());
                        }
                    }),
                    HasSubstr("library_is_older_than_schema_version_4"));
    }
    EXPECT_EQ(DeviceDatabase(url).find("1205")->brandLabelName, "label");
    EXPECT_FALSE(DeviceDatabase(url).find("3000").has_value());
}

TEST_P(SearchMigration, StoresAgainWhatAnOlderLibraryRemoved)
{
    Poco::Data::Session writer = place.otherProgram();
    if (place.engine() == testkit::Engine::Sqlite) {
        writer << "PRAGMA foreign_keys = ON", now;
    }
    writer << "DELETE FROM device_properties", now;
    DeviceDatabase database(url);
    database.insert(device("1205"), contentNamed("again"));
    EXPECT_THAT(found({"label"}), ElementsAre("1205"));
    EXPECT_EQ(database.content("kv38", "1205")->parameters.size(), 2U);
}

// The kept file of version 1 has records alone.
TEST(SearchMigrationOfVersion1, FindsRecordsByTheirSizes)
{
    const testkit::TemporaryDirectory directory;
    const std::string path = directory.path("devices.sqlite");
    std::filesystem::copy(KEPT_FILES "/devices-version-1.db", path);
    DeviceDatabase database("sqlite:" + path);
    EXPECT_EQ(database.search({}).size(), 11U);
    EXPECT_THAT(database.search({{"ai"}, {}}), IsEmpty());
    for (const auto& module : database.search({})) {
        const auto same = database.search(
            {{},
             {{"in_bytes", Comparison::Equal, std::to_string(module.inDataSize)},
              {"file_bytes", Comparison::Equal, std::to_string(module.mxFileSize)}}});
        EXPECT_THAT(moduleIds(same), testing::Contains(module.moduleIdText));
    }
}

TEST(SearchMigrationPostgresql, GivesReadersTheNewTables)
{
    const testkit::TestDatabase place(testkit::Engine::Postgresql);
    DeviceDatabase(place.url()).insert(device("1"), contentNamed("one"));
    place.becomeVersion(3);
    const std::string schema = place.url().substr(place.url().find("search_path=") + 12);
    const std::string reader = "Reader of " + schema; // a name that must be quoted
    place.execute("CREATE ROLE \"" + reader + "\" LOGIN");
    place.execute("GRANT USAGE ON SCHEMA " + schema + " TO \"" + reader + "\"");
    place.execute("GRANT SELECT ON ALL TABLES IN SCHEMA " + schema + " TO \"" + reader + "\"");
    DeviceDatabase{place.url()};
    std::string url = place.url();
    url.replace(url.find("user=tester"), 11, "user='" + reader + "'");
    EXPECT_THAT(moduleIds(DeviceDatabase(url).search({{"limit"}, {}})), ElementsAre("1"));
    place.execute("DROP OWNED BY \"" + reader + "\"");
    place.execute("DROP ROLE \"" + reader + "\"");
}

} // namespace
