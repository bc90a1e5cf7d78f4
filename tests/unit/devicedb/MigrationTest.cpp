#include "Records.h"

#include <Failure.h>
#include <TemporaryDirectory.h>
#include <TestDatabase.h>

#include <Poco/Data/RecordSet.h>
#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using testing::Each;
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

    // The tables of a database as SQL, however they were created.
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
    EXPECT_EQ(number("SELECT version FROM schema_version"), 4);
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
                  ": its schema has version 7, this library supports 4 at most");
    EXPECT_EQ(number("SELECT version FROM schema_version"), 7);
    EXPECT_EQ(number("SELECT count(*) FROM sqlite_master WHERE name = 'modules'"), 0);
}

// A database of version 2, whose catalogue had 8 bits for a bit field without a length.
class OldWidths : public testkit::OnEachEngine
{
protected:
    // Number, name, position; the datatype; flags to unit, all 0; the bits; of the module.
    static std::string record(char datatype, char bitLength, char bitOffset)
    {
        return std::string("\x01\0\x64\x04", 4) + datatype + std::string(21, '\0') + bitLength +
               bitOffset + '\xFF';
    }

    // A group without payload, then the parameter records.
    static std::string fileOf(const std::string& records)
    {
        const auto length = static_cast<char>(records.size() + 6);
        return std::string("\x7A\xBC\0\x06\0\0", 6) + std::string("\x20\xC0\0", 3) + length +
               records + std::string("\0\0\xFF", 3);
    }

    static std::string fiveParameters()
    {
        return record(5, 0, 6) + record(5, 3, 2) + record(2, 0, 0) + record(5, 3, 6) +
               record(5, 0, 0);
    }

    static void store(DeviceDatabase& database, const std::string& id, const std::string& file)
    {
        DeviceProperties stored = device(id);
        stored.mxFileData = new std::vector<char>(file.begin(), file.end());
        devices::database::ModuleContent content;
        for (const unsigned width : {8U, 3U, 16U, 3U, 8U}) {
            content.parameters.emplace_back().widthBits = width;
        }
        database.insert(stored, content);
    }

    void store(const std::string& id, const std::string& file)
    {
        DeviceDatabase database(url);
        store(database, id, file);
    }

    std::vector<unsigned> widthsOf(const std::string& id)
    {
        const auto content = DeviceDatabase(url).content("kv38", id);
        std::vector<unsigned> widths;
        for (const auto& parameter : content->parameters) {
            widths.push_back(parameter.widthBits);
        }
        return widths;
    }
};

RUN_ON_EACH_ENGINE(OldWidths);

TEST_P(OldWidths, AreTakenFromTheStoredFiles)
{
    store("1", fileOf(fiveParameters()));
    place.becomeVersion(2);
    // Bits 6 and 7; three; a UInt16; bits 6 to 8, which leave the byte; a byte.
    EXPECT_THAT(widthsOf("1"), ElementsAre(2, 3, 16, 0, 8));
}

TEST_P(OldWidths, StayWhereNoFileStatesThem)
{
    const std::string whole = fileOf(fiveParameters());
    store("without", "");
    store("cut", whole.substr(0, whole.size() - 10));
    store("framing", whole.substr(0, 6) + "\x20\xC0" + std::string("\0\x05", 2) + whole.substr(10));
    store("four", fileOf(fiveParameters().substr(29)));
    store("other", whole.substr(0, 6));
    place.becomeVersion(2);
    for (const char* id : {"without", "cut", "framing", "four", "other"}) {
        EXPECT_THAT(widthsOf(id), ElementsAre(8, 3, 16, 3, 8)) << id;
    }
}

// As a program with the library of version 2 that is still writing.
TEST_P(OldWidths, OfAWriterThatHasNotCommittedAreTakenToo)
{
    store("1", fileOf(fiveParameters()));
    place.becomeVersion(2);
    Poco::Data::Session writer = place.otherProgram();
    writer.begin();
    writer << (place.engine() == testkit::Engine::Sqlite
                   ? "DELETE FROM schema_version WHERE false"
                   : "SELECT version FROM schema_version FOR UPDATE"),
        Poco::Data::Keywords::now;
    writer << "UPDATE parameters SET width_bits = 7", Poco::Data::Keywords::now;
    std::thread migration([this] { DeviceDatabase{url}; });
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // it waits for the writer
    writer.commit();
    migration.join();
    EXPECT_THAT(widthsOf("1"), ElementsAre(2, 3, 7, 0, 8));
}

// Without bit fields no two of them change the same row, except that of the version.
TEST_P(OldWidths, MayBeMissingWhenManyMigrateAtOnce)
{
    DeviceDatabase{url};
    for (int round = 0; round < 3; ++round) {
        place.becomeVersion(2);
        std::vector<std::string> failures(8);
        std::vector<std::thread> threads;
        for (std::string& failure : failures) {
            threads.emplace_back([&] {
                try {
                    DeviceDatabase{url};
                } catch (const std::exception& thrown) {
                    failure = thrown.what();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_THAT(failures, Each(""));
        int rows = 0;
        place.otherProgram() << "SELECT count(*) FROM schema_version",
            Poco::Data::Keywords::into(rows), Poco::Data::Keywords::now;
        EXPECT_EQ(rows, 1);
    }
}

} // namespace
