#include "AllocationFault.h"
#include "ConfiguredModule.h"
#include "DeviceView.h"
#include "ExampleModule.h"
#include "LogCapture.h"
#include "LostMemoryExpected.h"
#include "TemporaryDirectory.h"

#include <devices/database/DeviceDatabase.h>

#include <Poco/Logger.h>
#include <Poco/NullChannel.h>

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <vector>

// Every allocation of an operation fails once, one after the other: std::bad_alloc comes out,
// nothing is lost, and the next run of the operation gives what it always gives. LeakSanitizer
// looks at what is left when the program ends.

// A file that cannot be loaded ends a walk of `populateDatabase` with the directory still open.
extern "C" const char* __lsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:opendir";
}

namespace {

using devices::database::usedDatabase;
using devices::parser::FieldbusType;
using devices::parser::IDeviceParser;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testkit::AllocationFault;
using testkit::ParserAccess;

// With EVERY_EXAMPLE in the environment every example module and every allocation has its turn;
// without it there are fewer, for everyday.
bool isLongForm()
{
    return std::getenv("EVERY_EXAMPLE") != nullptr;
}

std::vector<std::string> examples()
{
    if (!isLongForm()) {
        return {"MX0001.bin", "MX0304.bin", "MX0602.bin"};
    }
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".bin" && name != "MX9999.bin") {
            names.push_back(name);
        }
    }
    return names;
}

// Everything that a host reads of a device, as text.
std::string describe(const datamodel::Device& device)
{
    std::string text = device.deviceTypeId + "|" + device.brandLabelName;
    for (const auto& [name, value] : propertiesOf(device)) {
        text += "\n" + name + "=" + value;
    }
    for (const auto* image :
         attributesOf<datamodel::BinaryObject>(device, datamodel::binaryObjectTypeCode)) {
        text += "\n" + image->id + image->data;
    }
    for (const auto* channel :
         attributesOf<datamodel::Channel>(device, datamodel::channelTypeCode)) {
        text += "\n" + channel->id + "|" + channel->name + "|" + channel->iecSymbol;
    }
    for (const auto* parameter :
         attributesOf<datamodel::Parameter>(device, datamodel::parameterTypeCode)) {
        text += "\n" + parameter->id + "|" + parameter->name + "|" + parameter->value + "|" +
                parameter->unit + "|" + parameter->valueRange->min + "|" +
                parameter->valueRange->max;
        for (const auto& option : parameter->options) {
            text += "|" + option->text + "=" + option->value;
        }
    }
    for (const auto* set : attributesOf<datamodel::Set>(device, datamodel::setTypeCode)) {
        text += "\n" + set->id + "|" + set->name;
        for (const std::string& member : set->members) {
            text += " " + member;
        }
    }
    return text;
}

std::string describe(const std::shared_ptr<ParserAccess::DeviceP>& device)
{
    const auto& block = *device->privateProps.defaultParameterBlock;
    return describe(static_cast<const datamodel::Device&>(*device)) +
           std::string(block.begin(), block.end());
}

std::string describe(const std::shared_ptr<std::vector<char>>& bytes)
{
    return {bytes->begin(), bytes->end()};
}

std::string describe(const std::vector<std::unique_ptr<IDeviceParser::ChannelMappingInfo>>& list)
{
    std::string text;
    for (const auto& info : list) {
        text += info->iecSymbol + " " + std::to_string(info->byteAddress) + "." +
                std::to_string(info->bitOffset) + " " + std::to_string(info->mask) + "\n";
    }
    return text;
}

// What an operation does when an allocation fails.
enum class Outcome
{
    Throws,
    ThrowsOrGoesOn
};

// Runs `operation` with its first allocation failing, then its second, until it has no more.
// Returns how many there were.
template <class Operation>
std::size_t failEveryAllocation(Operation operation, Outcome outcome = Outcome::Throws)
{
    operation();
    const std::string expected = describe(operation());
    const std::size_t held = testkit::heldBlocks();
    for (std::size_t number = 1;; ++number) {
        bool happened = false;
        bool threw = false;
        {
            const AllocationFault fault(number);
            try {
                operation();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            happened = fault.happened();
        }
        EXPECT_TRUE(threw == happened || outcome == Outcome::ThrowsOrGoesOn)
            << "allocation " << number;
        EXPECT_EQ(describe(operation()), expected) << "after allocation " << number;
        EXPECT_EQ(testkit::heldBlocks(), held) << "after allocation " << number;
        if (!happened || testing::Test::HasFailure()) {
            return number - 1;
        }
    }
}

class AllocationFailure : public testing::Test
{
protected:
    ~AllocationFailure() override
    {
        std::cout << "Allocations that failed: " << failures << std::endl;
    }

    // Each example with one value set, so that a configuration has something to do.
    template <class Operation>
    void forEachExample(Operation operation)
    {
        for (const std::string& name : examples()) {
            ConfiguredModule module = exampleModule(name);
            for (const auto& attribute : module.device->attributes) {
                if (attribute->typeCode() == datamodel::parameterTypeCode) {
                    const auto& first = static_cast<const ParserAccess::ParameterP&>(*attribute);
                    module.set(first.name, first.value);
                    break;
                }
            }
            SCOPED_TRACE(name);
            failures += failEveryAllocation([&] { return operation(module); });
        }
    }

    std::size_t failures = 0;
};

TEST_F(AllocationFailure, TheChosenAllocationFailsAndNoOther)
{
    // Operators that are called by name: the compiler may do without those of a new expression.
    const AllocationFault fault(2);
    operator delete(operator new(1));
    EXPECT_FALSE(fault.happened());
    EXPECT_THROW(operator delete(operator new(1)), std::bad_alloc);
    EXPECT_TRUE(fault.happened());
    EXPECT_NO_THROW(operator delete(operator new(1)));
}

TEST_F(AllocationFailure, OfATranslation)
{
    forEachExample([](ConfiguredModule& module) {
        return module.parser.parse(module.mxData, nullptr, 100, 200);
    });
    EXPECT_GT(failures, 300U);
}

TEST_F(AllocationFailure, OfATranslationByANewParser)
{
    forEachExample([](ConfiguredModule& module) {
        devices::parser::mx::Parser_kv38 parser;
        std::vector<char> block = *module.device->privateProps.defaultParameterBlock;
        return parser.parse(module.mxData, &block, 0, 0);
    });
    EXPECT_GT(failures, 300U);
}

TEST_F(AllocationFailure, OfATranslationThatTellsEverything)
{
    ConfiguredModule module = exampleModule(isLongForm() ? "MX0304.bin" : "MX0001.bin");
    const Poco::AutoPtr<Poco::Channel> previous(module.parser.logger.getChannel());
    module.parser.logger.setChannel(Poco::AutoPtr<Poco::Channel>(new Poco::NullChannel));
    module.parser.setLoggingLevel("trace");
    // Poco builds the text of a line in a stream, and streams swallow what is thrown within them:
    // the line is cut then.
    failures += failEveryAllocation(
        [&] { return module.parser.parse(module.mxData, nullptr, 0, 0); }, Outcome::ThrowsOrGoesOn);
    module.parser.logger.setChannel(previous);
    EXPECT_GT(failures, 300U);
}

TEST_F(AllocationFailure, OfARawConfiguration)
{
    for (const FieldbusType fieldbus : {FieldbusType::Raw, FieldbusType::Modbus}) {
        forEachExample([&](ConfiguredModule& module) {
            return module.parser.getCalculatedRawConfig(fieldbus, module.mxData,
                                                        module.device.get(), &module.user);
        });
    }
    EXPECT_GT(failures, 100U);
}

TEST_F(AllocationFailure, OfAModbusBuffer)
{
    forEachExample([](ConfiguredModule& module) {
        std::vector<char> raw = *module.device->privateProps.defaultParameterBlock;
        return module.parser.createModbusParamBuffer(module.device.get(), &raw);
    });
    EXPECT_GT(failures, 10U);
}

TEST_F(AllocationFailure, OfAChannelMapping)
{
    forEachExample([](ConfiguredModule& module) {
        return module.parser.getChannelMappingInfoList(module.device.get());
    });
    EXPECT_GT(failures, 10U);
}

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

// How far the database is when the allocations begin to fail.
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
                // Poco's driver loses a file that it has opened when memory runs out after that.
                const testkit::LostMemoryExpected lost;
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
            EXPECT_EQ(labels(), after); // SQLite did without, or there was nothing to fail
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
    EXPECT_GT(logged, 50U);
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
