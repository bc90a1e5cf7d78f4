#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace {

using devices::database::DeviceDatabase;
using devices::database::OpenMode;
using testing::Each;
using testing::ElementsAre;
using testkit::failureOf;

class Schema : public testkit::OnEachEngine
{
protected:
    std::string openFailure() const
    {
        return failureOf([&] { DeviceDatabase database(url); });
    }

    /// Expects the unchanged database to be rejected for `reason`.
    void expectRefused(const std::string& reason) const
    {
        EXPECT_EQ(openFailure(), "Cannot open device database " + place.name() + ": " + reason);
    }

    int version() const
    {
        int version = 0;
        place.otherProgram() << "SELECT max(version) FROM schema_version",
            Poco::Data::Keywords::into(version), Poco::Data::Keywords::now;
        return version;
    }
};

RUN_ON_EACH_ENGINE(Schema);

TEST_P(Schema, NewDatabaseStatesItsVersion)
{
    DeviceDatabase database(url);
    int rows = 0;
    place.otherProgram() << "SELECT count(*) FROM schema_version", Poco::Data::Keywords::into(rows),
        Poco::Data::Keywords::now;
    EXPECT_EQ(version(), 4);
    EXPECT_EQ(rows, 1);
}

TEST_P(Schema, OpeningAgainKeepsTheRecords)
{
    DeviceDatabase(url).insert(device("1"));
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_P(Schema, WhatIsThereOnlyIsNotMade)
{
    DeviceDatabase{url};
    DeviceDatabase(url, OpenMode::ExistingOnly).insert(device("1"));
    const testkit::TestDatabase empty(GetParam());
    EXPECT_EQ(failureOf([&] { DeviceDatabase(empty.url(), OpenMode::ExistingOnly); }),
              "Cannot open device database " + empty.name() +
                  (GetParam() == testkit::Engine::Sqlite ? ": there is no such file"
                                                         : ": it holds no device database"));
}

TEST_P(Schema, NewerVersionIsRefused)
{
    DeviceDatabase{url};
    place.execute("UPDATE schema_version SET version = 5");
    expectRefused("its schema has version 5, this library supports 4 at most");
}

TEST_P(Schema, VersionBelow1IsRefused)
{
    DeviceDatabase{url};
    place.execute("UPDATE schema_version SET version = -1");
    expectRefused("its table schema_version states version -1, expected 1 or above");
}

TEST_P(Schema, MissingVersionIsRefused)
{
    DeviceDatabase{url};
    place.execute("DELETE FROM schema_version");
    expectRefused("its table schema_version states version 0, expected 1 or above");
}

TEST_P(Schema, DatabaseOfSomethingElseIsRefused)
{
    place.execute("CREATE TABLE customers (name TEXT)");
    expectRefused("it holds other tables, expected a device database or an empty one");
}

TEST_P(Schema, DatabaseOfSomethingElseWithAVersionTableIsRefused)
{
    place.execute("CREATE TABLE schema_version (version INTEGER)");
    place.execute("INSERT INTO schema_version VALUES (1)");
    expectRefused("it holds other tables, expected a device database or an empty one");
}

TEST_P(Schema, ManyCanOpenANewDatabaseAtOnce)
{
    for (int round = 0; round < 5; ++round) {
        const testkit::TestDatabase fresh(GetParam());
        std::vector<std::string> failures(8);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < failures.size(); ++i) {
            threads.emplace_back([&, i] {
                try {
                    DeviceDatabase(fresh.url()).insert(device(std::to_string(i)));
                } catch (const std::exception& failure) {
                    failures[i] = failure.what();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_THAT(failures, Each(""));
        EXPECT_EQ(storedIds(fresh.url()).size(), 8U);
    }
}

TEST(SqliteSchema, NewFileThatIsLockedIsWaitedForAsLongAsStated)
{
    const testkit::TestDatabase place(testkit::Engine::Sqlite);
    Poco::Data::Session other = place.otherProgram();
    other << "BEGIN IMMEDIATE", Poco::Data::Keywords::now;
    setenv("DEVICE_DATABASE_WAIT", "1", 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(failureOf([&] { DeviceDatabase{place.url()}; }),
              "Cannot open device database " + place.url() + ": database is locked");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    unsetenv("DEVICE_DATABASE_WAIT");
    other << "ROLLBACK", Poco::Data::Keywords::now;
    DeviceDatabase{place.url()};
}

} // namespace
