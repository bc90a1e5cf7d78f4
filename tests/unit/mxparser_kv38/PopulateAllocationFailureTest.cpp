#include "FailEveryAllocation.h"
#include "LogCapture.h"
#include "TemporaryDirectory.h"

#include <devices/database/DeviceDatabase.h>

#include <sqlite3.h>

#include <iterator>

// Every allocation of a populate fails once: the database is unchanged or complete, and the next
// populate works.

namespace {

using devices::database::usedDatabase;
using testing::AnyOf;
using testing::ElementsAre;
using testing::StartsWith;
using testkit::AllocationFault;
using testkit::ParserAccess;

// SQLite's own allocator, with the same fault.

sqlite3_mem_methods sqliteMemory{};

void* sqliteMalloc(int size)
{
    return testkit::allocationFails() ? nullptr : sqliteMemory.xMalloc(size);
}

void* sqliteRealloc(void* memory, int size)
{
    return testkit::allocationFails() ? nullptr : sqliteMemory.xRealloc(memory, size);
}

void makeSqliteFail()
{
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &sqliteMemory);
    sqlite3_mem_methods failing = sqliteMemory;
    failing.xMalloc = sqliteMalloc;
    failing.xRealloc = sqliteRealloc;
    ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_MALLOC, &failing), SQLITE_OK);
}

std::size_t openFiles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(files, std::filesystem::directory_iterator()));
}

// The state of the database when the allocations begin to fail.
enum class Database
{
    Used,   // its statements are prepared
    Open,   // nothing was done with it
    Closed, // it is opened as well
};

class PopulateAllocationFailure : public AllocationFailure,
                                  public testing::WithParamInterface<Database>
{
protected:
    static void SetUpTestSuite() { makeSqliteFail(); }

    PopulateAllocationFailure() { open(); }
    ~PopulateAllocationFailure() override { devices::database::useDatabase("sqlite::memory:"); }

    void open() const
    {
        devices::database::useDatabase("sqlite:" + databases.path("devices.sqlite"));
    }

    static std::vector<std::string> labels()
    {
        std::vector<std::string> labels;
        for (const auto& record : usedDatabase().list()) {
            labels.push_back(record.moduleIdText + " " + record.brandLabelName + " " +
                             std::to_string(record.mxFileData->size()));
        }
        return labels;
    }

    // The walk with one allocation failing.
    void populateWithFault(std::size_t number)
    {
        const testkit::LogCapture log("error");
        inserted = 0;
        threw = false;
        if (GetParam() == Database::Open) {
            open();
        }
        const AllocationFault fault(number);
        try {
            if (GetParam() == Database::Closed) {
                open();
            }
            inserted = parser.populateDatabase(directory.path());
        } catch (const std::bad_alloc&) {
            threw = true;
        } catch (const std::runtime_error& failure) {
            EXPECT_THAT(failure.what(), StartsWith("Cannot open device database sqlite:"));
            threw = true;
        }
        happened = fault.happened();
        lines.clear();
        for (const auto& line : log.lines()) {
            lines.push_back(line.text);
        }
    }

    testkit::TemporaryDirectory databases;
    testkit::TemporaryDirectory directory;
    ParserAccess parser;
    unsigned inserted = 0;
    bool threw = false;
    bool happened = true;
    std::vector<std::string> lines;
};

TEST_P(PopulateAllocationFailure, LeavesTheDatabaseAsItWasOrAsItIsToBe)
{
    directory.write("MX1.bin", testkit::minimalModule({}, 1).chars());
    ASSERT_EQ(parser.populateDatabase(directory.path()), 1U);
    const std::vector<std::string> before = labels();
    directory.write("MX1.bin", bufferOf(exampleGroups()).chars());
    ASSERT_EQ(parser.populateDatabase(directory.path()), 1U);
    const std::vector<std::string> after = labels();
    ASSERT_EQ(after.size(), 2U);
    ASSERT_TRUE(usedDatabase().remove("01020304"));

    const std::size_t files = openFiles();
    std::size_t thrown = 0;
    std::size_t logged = 0;
    std::size_t done = 0;
    const std::size_t step = isLongForm() || GetParam() == Database::Used ? 1 : 17;
    for (std::size_t number = 1; happened && !HasFailure(); number += step) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        populateWithFault(number);
        if (inserted == 1) {
            EXPECT_EQ(labels(), after); // SQLite did not need it, or there was nothing to fail
            EXPECT_THAT(lines, testing::IsEmpty());
            EXPECT_TRUE(usedDatabase().remove("01020304"));
            ++done;
            continue;
        }
        EXPECT_EQ(labels(), before);
        if (threw) {
            ++thrown;
            EXPECT_THAT(lines, testing::IsEmpty());
        } else {
            ++logged;
            EXPECT_THAT(lines, ElementsAre(AnyOf("File MX1.bin: std::bad_alloc",
                                                 StartsWith("File MX1.bin: Cannot write to device "
                                                            "database sqlite:"))));
        }
        EXPECT_EQ(parser.populateDatabase(directory.path()), 1U);
        EXPECT_EQ(labels(), after);
        EXPECT_TRUE(usedDatabase().remove("01020304"));
    }
    failures = thrown + logged;
    EXPECT_GT(thrown, 0U);
    EXPECT_GT(logged, 40U);
    // Each failed load leaves its directory open, no other failure does.
    EXPECT_LE(openFiles() - files, thrown);
    std::cout << "Ended by an exception: " << thrown << ", file skipped: " << logged
              << ", done without: " << done - 1 << std::endl;
}

std::string nameOf(const testing::TestParamInfo<Database>& state)
{
    const char* const names[] = {"Used", "Open", "Closed"};
    return names[static_cast<int>(state.param)];
}

INSTANTIATE_TEST_SUITE_P(Databases, PopulateAllocationFailure,
                         testing::Values(Database::Used, Database::Open, Database::Closed), nameOf);

} // namespace
