#include "Records.h"

#include <TemporaryDirectory.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace {

using devices::database::insertDeviceProperties;
using devices::database::useDatabase;
using testing::ElementsAre;
using testing::ExitedWithCode;

void insert(const char* moduleId)
{
    auto record = device(moduleId);
    insertDeviceProperties(record);
}

// Each test runs in a process of its own: nothing has chosen or opened a database there.
class ProcessExit : public testing::Test
{
protected:
    ProcessExit() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    // The same path for the parent and the child, which runs this constructor too.
    std::string directory = (std::filesystem::temp_directory_path() /
                             (std::string("devicedb-exit-") +
                              testing::UnitTest::GetInstance()->current_test_info()->name()))
                                .string();
    std::string path = directory + "/devices.sqlite";

    void prepareDirectory() const
    {
        std::filesystem::remove_all(directory);
        std::filesystem::create_directory(directory);
    }
    void expectStored(const std::string& id) const
    {
        EXPECT_THAT(storedIds("sqlite:" + path), ElementsAre(id));
        std::filesystem::remove_all(directory);
    }
};

using ProcessExitDeathTest = ProcessExit;

TEST_F(ProcessExitDeathTest, OpenDatabaseIsNoTrouble)
{
    EXPECT_EXIT(
        {
            prepareDirectory();
            useDatabase("sqlite:" + path);
            insert("1");
            std::exit(0);
        },
        ExitedWithCode(0), "^$");
    expectStored("1");
}

TEST_F(ProcessExitDeathTest, DatabaseCanBeUsedWhileStaticsAreDestroyed)
{
    EXPECT_EXIT(
        {
            prepareDirectory();
            // Registered before the first use: runs after what the library registers.
            std::atexit([] { insert("late"); });
            useDatabase("sqlite:" + path);
            std::exit(0);
        },
        ExitedWithCode(0), "^$");
    expectStored("late");
}

TEST_F(ProcessExitDeathTest, FirstInsertOpensTheDefaultFile)
{
    EXPECT_EXIT(
        {
            prepareDirectory();
            std::filesystem::current_path(directory);
            unsetenv("DEVICE_DATABASE_URL");
            insert("default");
            std::exit(0);
        },
        ExitedWithCode(0), "^$");
    expectStored("default");
}

TEST_F(ProcessExitDeathTest, FirstInsertOpensWhatTheEnvironmentNames)
{
    EXPECT_EXIT(
        {
            prepareDirectory();
            setenv("DEVICE_DATABASE_URL", ("sqlite:" + path).c_str(), 1);
            insert("named");
            std::exit(0);
        },
        ExitedWithCode(0), "^$");
    expectStored("named");
}

} // namespace
