#include "Records.h"

#include <Failure.h>
#include <TemporaryDirectory.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace {

using devices::database::defaultDatabaseUrl;
using devices::database::insertDeviceProperties;
using devices::database::insertThrough;
using devices::database::useDatabase;
using devices::database::usedDatabase;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::failureOf;

class UsedDatabase : public testing::Test
{
protected:
    ~UsedDatabase() override
    {
        useDatabase("sqlite::memory:");
        unsetenv("DEVICE_DATABASE_URL");
    }

    testkit::TemporaryDirectory directory;
    std::string path = directory.path("devices.sqlite");
    std::string url = "sqlite:" + path;
};

TEST_F(UsedDatabase, InsertedRecordsGoThere)
{
    useDatabase(url);
    auto record = device("1");
    insertDeviceProperties(record);
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
    EXPECT_THAT(moduleIds(usedDatabase().list()), ElementsAre("1"));
}

TEST_F(UsedDatabase, InsertedRecordReplacesThatOfTheSameModule)
{
    useDatabase(url);
    auto first = device("1", "first");
    auto second = device("1", "second");
    insertDeviceProperties(first);
    insertDeviceProperties(second);
    EXPECT_EQ(usedDatabase().list().size(), 1U);
    EXPECT_EQ(usedDatabase().find("1")->brandLabelName, "second");
}

TEST_F(UsedDatabase, IsOpenedAtOnce)
{
    useDatabase(url);
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(UsedDatabase, FailingChoiceKeepsTheOldOne)
{
    useDatabase(url);
    EXPECT_EQ(failureOf([&] { useDatabase("sqlite:" + directory.path()); }),
              "Cannot open device database sqlite:" + directory.path() + ": it is a directory");
    auto record = device("1");
    insertDeviceProperties(record);
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_F(UsedDatabase, AnotherChoiceReplacesTheOldOne)
{
    useDatabase(url);
    useDatabase("sqlite::memory:");
    auto record = device("1");
    insertDeviceProperties(record);
    EXPECT_THAT(storedIds(url), IsEmpty());
}

TEST_F(UsedDatabase, ChosenInsertionTakesTheRecordsInItsPlace)
{
    useDatabase(url);
    std::vector<std::string> taken;
    insertThrough([&](auto& record) { taken.push_back(record.moduleIdText); });
    auto record = device("1");
    insertDeviceProperties(record);
    insertThrough({});
    EXPECT_THAT(taken, ElementsAre("1"));
    EXPECT_THAT(storedIds(url), IsEmpty());
    insertDeviceProperties(record);
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_F(UsedDatabase, DefaultIsAFileInTheWorkingDirectory)
{
    unsetenv("DEVICE_DATABASE_URL");
    EXPECT_EQ(defaultDatabaseUrl(), "sqlite:devices.sqlite");
}

TEST_F(UsedDatabase, DefaultIsWhatTheEnvironmentNames)
{
    setenv("DEVICE_DATABASE_URL", url.c_str(), 1);
    EXPECT_EQ(defaultDatabaseUrl(), url);
}

TEST_F(UsedDatabase, PathThatLooksLikeAUriIsAPath)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(directory.path());
    useDatabase("sqlite:file:devices?mode=memory");
    std::filesystem::current_path(before);
    EXPECT_TRUE(std::filesystem::exists(directory.path("file:devices?mode=memory")));
}

} // namespace
