#include "Records.h"

#include <Failure.h>
#include <TemporaryDirectory.h>

#include <Poco/Data/RecordSet.h>
#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using testing::ElementsAre;
using testing::HasSubstr;
using testkit::failureOf;

// A copy of the file that the first version wrote.
class Migration : public testing::Test
{
protected:
    Migration() { std::filesystem::copy(KEPT_FILES "/devices-version-1.db", path); }

    Poco::Data::Session otherProgram() const
    {
        constexpr std::size_t noRetry = 0;
        return Poco::Data::Session(Poco::Data::SQLite::Connector().createSession(path, noRetry));
    }

    int number(const std::string& question) const
    {
        int answer = -1;
        otherProgram() << question, Poco::Data::Keywords::into(answer), Poco::Data::Keywords::now;
        return answer;
    }

    // Every row of the records, all columns in hexadecimal.
    std::vector<std::string> rows() const
    {
        std::vector<std::string> lines;
        otherProgram() << "SELECT hex(family) || hex(module_id) || hex(brand_label_name) ||"
                          " hex(text4) || hex(text5) || hex(host_bytes) || hex(mx_file_data) ||"
                          " hex(default_parameter_block) || in_data_size || '/' || out_data_size"
                          " FROM device_properties ORDER BY module_id",
            Poco::Data::Keywords::into(lines), Poco::Data::Keywords::now;
        return lines;
    }

    // The tables of a database as SQL, whatever way led to them.
    static std::vector<std::string> schemaOf(Poco::Data::Session session)
    {
        std::vector<std::string> statements;
        session << "SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name",
            Poco::Data::Keywords::into(statements), Poco::Data::Keywords::now;
        return statements;
    }

    testkit::TemporaryDirectory directory;
    std::string path = directory.path("devices.sqlite");
    std::string url = "sqlite:" + path;
};

TEST_F(Migration, KeptFileIsOfTheFirstVersion)
{
    EXPECT_EQ(number("SELECT version FROM schema_version"), 1);
    EXPECT_EQ(rows().size(), 11U);
}

TEST_F(Migration, KeepsEveryRecordByteForByte)
{
    const auto before = rows();
    DeviceDatabase{url};
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(number("SELECT version FROM schema_version"), 2);
    EXPECT_EQ(number("SELECT count(*) FROM schema_version"), 1);
}

TEST_F(Migration, LeadsToTheSchemaOfANewDatabase)
{
    DeviceDatabase{url};
    const std::string fresh = directory.path("fresh.sqlite");
    DeviceDatabase{"sqlite:" + fresh};
    EXPECT_EQ(schemaOf(otherProgram()),
              schemaOf(Poco::Data::Session(
                  Poco::Data::SQLite::Connector().createSession(fresh, std::size_t{0}))));
}

TEST_F(Migration, RecordsAreUsedAndFilledLater)
{
    DeviceDatabase database(url);
    const auto record = database.find("5a030304");
    ASSERT_TRUE(record.has_value());
    EXPECT_FALSE(database.search({}).front().hasContent);
    database.insert(*record, contentNamed("later"));
    EXPECT_THAT(moduleIds(database.search({{"later"}, {}})), ElementsAre("5a030304"));
}

TEST_F(Migration, ThatFailsLeavesTheFileAtItsVersion)
{
    otherProgram() << "CREATE TABLE options (in_the_way INTEGER)", Poco::Data::Keywords::now;
    const auto before = rows();
    EXPECT_THAT(failureOf([&] { DeviceDatabase database(url); }),
                HasSubstr("table options already exists"));
    EXPECT_EQ(number("SELECT version FROM schema_version"), 1);
    EXPECT_EQ(number("SELECT count(*) FROM sqlite_master WHERE name = 'modules'"), 0);
    EXPECT_EQ(rows(), before);
}

TEST_F(Migration, OfANewerVersionIsRefusedWithBothNamed)
{
    otherProgram() << "UPDATE schema_version SET version = 7", Poco::Data::Keywords::now;
    EXPECT_EQ(failureOf([&] { DeviceDatabase database(url); }),
              "Cannot open device database " + url +
                  ": its schema has version 7, this library knows 2 at most");
    EXPECT_EQ(number("SELECT version FROM schema_version"), 7);
    EXPECT_EQ(number("SELECT count(*) FROM sqlite_master WHERE name = 'modules'"), 0);
}

} // namespace
