#include "Records.h"

#include <Failure.h>
#include <TemporaryDirectory.h>

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <thread>

namespace {

using devices::database::DeviceDatabase;
using testing::Each;
using testing::ElementsAre;
using testkit::failureOf;

std::string content(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

class Schema : public testing::Test
{
protected:
    testkit::TemporaryDirectory directory;
    std::string path = directory.path("devices.sqlite");
    std::string url = "sqlite:" + path;

    std::string openFailure() const
    {
        return failureOf([&] { DeviceDatabase database(url); });
    }

    /// Expects the file as it is to be refused for `reason` and to stay as it is.
    void expectRefused(const std::string& reason) const
    {
        const std::string before = content(path);
        EXPECT_EQ(openFailure(), "Cannot open device database " + url + ": " + reason);
        EXPECT_EQ(content(path), before);
    }
};

TEST_F(Schema, NewFileStatesVersion1)
{
    DeviceDatabase database(url);
    int version = 0;
    int rows = 0;
    otherProgram(path) << "SELECT max(version), count(*) FROM schema_version",
        Poco::Data::Keywords::into(version), Poco::Data::Keywords::into(rows),
        Poco::Data::Keywords::now;
    EXPECT_EQ(version, 1);
    EXPECT_EQ(rows, 1);
}

TEST_F(Schema, OpeningAgainKeepsTheRecordsAndTheFile)
{
    DeviceDatabase(url).insert(device("1"));
    const std::string before = content(path);
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
    EXPECT_EQ(content(path), before);
}

TEST_F(Schema, EmptyFileBecomesADatabase)
{
    directory.write("devices.sqlite", {});
    DeviceDatabase(url).insert(device("1"));
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_F(Schema, NewerVersionIsRefused)
{
    DeviceDatabase{url};
    execute(path, "UPDATE schema_version SET version = 2");
    expectRefused("its schema has version 2, this library knows 1 at most");
}

TEST_F(Schema, VersionBelow1IsRefused)
{
    DeviceDatabase{url};
    execute(path, "UPDATE schema_version SET version = -1");
    expectRefused("its table schema_version states version -1, expected 1 or above");
}

TEST_F(Schema, MissingVersionIsRefused)
{
    DeviceDatabase{url};
    execute(path, "DELETE FROM schema_version");
    expectRefused("its table schema_version states version 0, expected 1 or above");
}

TEST_F(Schema, DatabaseOfSomethingElseIsRefused)
{
    execute(path, "CREATE TABLE customers (name TEXT)");
    expectRefused("it holds other tables, expected a device database or an empty file");
}

TEST_F(Schema, DatabaseOfSomethingElseWithAVersionTableIsRefused)
{
    execute(path, "CREATE TABLE schema_version (version INTEGER)");
    execute(path, "INSERT INTO schema_version VALUES (1)");
    expectRefused("it holds other tables, expected a device database or an empty file");
}

TEST_F(Schema, ManyCanOpenANewFileAtOnce)
{
    for (int round = 0; round < 5; ++round) {
        const std::string fresh = "sqlite:" + directory.path("new" + std::to_string(round));
        std::vector<std::string> failures(8);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < failures.size(); ++i) {
            threads.emplace_back([&, i] {
                try {
                    DeviceDatabase(fresh).insert(device(std::to_string(i)));
                } catch (const std::exception& failure) {
                    failures[i] = failure.what();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_THAT(failures, Each(""));
        EXPECT_EQ(storedIds(fresh).size(), 8U);
    }
}

} // namespace
