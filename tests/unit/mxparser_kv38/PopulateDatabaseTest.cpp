#include "ExampleModule.h"
#include "Failure.h"
#include "LogCapture.h"
#include "LostMemoryExpected.h"
#include "ParserAccess.h"
#include "TemporaryDirectory.h"

#include <devices/database/DeviceDatabase.h>

#include <gmock/gmock.h>

#include <sqlite3.h>

#include <filesystem>
#include <vector>

namespace {

using devices::database::usedDatabase;
using Poco::Message;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using testkit::minimalModule;

constexpr const char* closeFailed = ">> populateDatabase(). Failed to call closedir().";

// A walk ended by a file leaves its directory handle open.
using LostHandleExpected = testkit::LostMemoryExpected;

void asAnotherProgram(const std::string& file, const char* statement)
{
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, statement, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

class PopulateDatabase : public testing::Test
{
protected:
    PopulateDatabase() { devices::database::useDatabase("sqlite::memory:"); }

    static std::vector<char> module(std::uint32_t id) { return minimalModule({}, id).chars(); }

    static std::vector<std::string> insertedIds()
    {
        std::vector<std::string> ids;
        for (const auto& record : usedDatabase().list()) {
            ids.push_back(record.moduleIdText);
        }
        return ids;
    }

    testkit::TemporaryDirectory directory;
    testkit::ParserAccess parser;
    testkit::LogCapture log{"debug"};
};

TEST_F(PopulateDatabase, FileNamedMX1BinIsTranslated)
{
    directory.write("MX1.bin", module(0x01020304));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 1U);
    EXPECT_THAT(insertedIds(), ElementsAre("01020304"));
    EXPECT_THAT(log.texts(Message::PRIO_ERROR), IsEmpty());
}

TEST_F(PopulateDatabase, NamesMXBinAndMx1BinAndMX1BINAreNotTaken)
{
    directory.write("MX.bin", module(1));
    directory.write("mx1.bin", module(1));
    directory.write("MX1.BIN", module(1));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 0U);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(parser.dev, nullptr);
}

TEST_F(PopulateDatabase, OtherNamesAreSkippedSilently)
{
    for (const char* name : {"M1.bin", "Mx1.bin", "MX1.bin.txt", "MX1bin", "MX1.bi", "aMX1.bin",
                             "MX1.bin~", ".MX1.bin", "MX12345"}) {
        directory.write(name, module(1));
    }
    std::filesystem::create_directory(directory.path("sub"));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 0U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(PopulateDatabase, AnyTextMayStandBetweenPrefixAndSuffix)
{
    directory.write("MX .bin", module(1));
    directory.write("MX.bin.bin", module(2));
    directory.write("MXM\xFCller.bin", module(3));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 3U);
    EXPECT_THAT(insertedIds(), ElementsAre("00000001", "00000002", "00000003"));
}

TEST_F(PopulateDatabase, TrailingSlashGivesTheSamePaths)
{
    directory.write("MX1.bin", module(1));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 1U);
    EXPECT_EQ(parser.populateDatabase(directory.path() + "/"), 1U);
    // The path is shown if a file cannot be loaded.
    std::filesystem::remove(directory.path("MX1.bin"));
    std::filesystem::create_directory(directory.path("MX1.bin"));
    const LostHandleExpected lost;
    for (const char* slash : {"", "/"}) {
        EXPECT_EQ(testkit::failureOf([&] { parser.populateDatabase(directory.path() + slash); }),
                  "Cannot open file: " + directory.path() + "/MX1.bin");
    }
}

TEST_F(PopulateDatabase, EmptyDirectoryGives0)
{
    EXPECT_EQ(parser.populateDatabase(directory.path()), 0U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(PopulateDatabase, NonExistentDirectoryGives0AndLogsTheFailedClose)
{
    EXPECT_EQ(parser.populateDatabase(directory.path("missing")), 0U);
    EXPECT_THAT(log.texts(Message::PRIO_ERROR), ElementsAre(closeFailed));
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(parser.populateDatabase(""), 0U);
}

TEST_F(PopulateDatabase, FileInPlaceOfADirectoryGives0AndLogsTheFailedClose)
{
    EXPECT_EQ(parser.populateDatabase(directory.write("MX1.bin", module(1))), 0U);
    EXPECT_THAT(log.texts(Message::PRIO_ERROR), ElementsAre(closeFailed));
}

TEST_F(PopulateDatabase, FailingFileIsLoggedAndTheOthersAreInserted)
{
    directory.write("MX1.bin", module(1));
    directory.write("MX2.bin", testkit::MxBuffer().group(0x0005, {}).chars());
    directory.write("MX3.bin", module(3));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 2U);
    EXPECT_THAT(insertedIds(), ElementsAre("00000001", "00000003"));
    EXPECT_THAT(
        log.texts(Message::PRIO_ERROR),
        ElementsAre("File MX2.bin: Parser::getTavoDatasetFromGroup(): No such group: 0001"));
}

TEST_F(PopulateDatabase, PercentSignsInANameAreNoFormat)
{
    directory.write("MX%s%i.bin", testkit::MxBuffer().group(0x0005, {}).chars());
    EXPECT_EQ(parser.populateDatabase(directory.path()), 0U);
    EXPECT_THAT(
        log.texts(Message::PRIO_ERROR),
        ElementsAre("File MX%s%i.bin: Parser::getTavoDatasetFromGroup(): No such group: 0001"));
}

TEST_F(PopulateDatabase, FailingInsertionIsLoggedAndNotCounted)
{
    const testkit::TemporaryDirectory databases;
    const std::string file = databases.path("devices.sqlite");
    devices::database::useDatabase("sqlite:" + file);
    asAnotherProgram(
        file,
        "CREATE TRIGGER refuse BEFORE INSERT ON device_properties"
        " WHEN NEW.module_id = CAST('00000001' AS BLOB) BEGIN SELECT RAISE(ABORT, 'refused'); END");
    directory.write("MX1.bin", module(1));
    directory.write("MX2.bin", module(2));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 1U);
    EXPECT_THAT(insertedIds(), ElementsAre("00000002"));
    EXPECT_THAT(log.texts(Message::PRIO_ERROR),
                ElementsAre(StartsWith(
                    "File MX1.bin: Cannot write to device database sqlite:" + file + ": refused")));
    devices::database::useDatabase("sqlite::memory:");
}

TEST_F(PopulateDatabase, FileThatCannotBeLoadedEndsTheWalk)
{
    std::filesystem::create_directory(directory.path("MX1.bin"));
    const LostHandleExpected lost;
    EXPECT_EQ(testkit::failureOf([&] { parser.populateDatabase(directory.path()); }),
              "Cannot open file: " + directory.path("MX1.bin"));
    EXPECT_THAT(log.texts(Message::PRIO_DEBUG), ElementsAre("Loading mx file MX1.bin"));
    EXPECT_THAT(log.texts(Message::PRIO_ERROR), IsEmpty());
}

TEST_F(PopulateDatabase, DanglingLinkEndsTheWalk)
{
    std::filesystem::create_symlink("nowhere", directory.path("MX1.bin"));
    const LostHandleExpected lost;
    EXPECT_EQ(testkit::failureOf([&] { parser.populateDatabase(directory.path()); }),
              "Cannot open file: " + directory.path("MX1.bin"));
}

// The type of an entry is not checked: this one is loaded, and holds no group.
TEST_F(PopulateDatabase, LinkToTheEmptyDeviceIsOneMoreFileThatFails)
{
    std::filesystem::create_symlink("/dev/null", directory.path("MX0.bin"));
    directory.write("MX1.bin", module(1));
    EXPECT_EQ(parser.populateDatabase(directory.path()), 1U);
    EXPECT_THAT(insertedIds(), ElementsAre("00000001"));
    EXPECT_THAT(
        log.texts(Message::PRIO_ERROR),
        ElementsAre("File MX0.bin: Parser::getTavoDatasetFromGroup(): No such group: 0001"));
}

TEST_F(PopulateDatabase, EveryLoadIsLoggedWithTheNameOnly)
{
    directory.write("MX1.bin", module(1));
    directory.write("MX2.bin", module(2));
    parser.populateDatabase(directory.path());
    std::vector<std::string> loads;
    for (const std::string& text : log.texts(Message::PRIO_DEBUG)) {
        if (text.rfind("Loading", 0) == 0) {
            loads.push_back(text);
        }
    }
    EXPECT_THAT(loads, UnorderedElementsAre("Loading mx file MX1.bin", "Loading mx file MX2.bin"));
}

TEST_F(PopulateDatabase, RecordHoldsTheFileAsLoadedAndEveryField)
{
    const std::vector<char> content = bufferOf(exampleGroups()).chars();
    directory.write("MX1.bin", content);
    parser.populateDatabase(directory.path());
    const auto records = usedDatabase().list();
    ASSERT_EQ(records.size(), 1U);
    const auto& record = records.front();
    std::vector<char> loaded = content;
    loaded.push_back('\xFF');
    EXPECT_EQ(*record.mxFileData, loaded);
    EXPECT_EQ(record.family, "kv38");
    EXPECT_EQ(record.moduleIdText, "01020304");
    EXPECT_EQ(record.brandLabelName, "Example");
    EXPECT_EQ(record.text4, std::string(1, '\0'));
    EXPECT_EQ(record.text5, std::string(1, '\0'));
    EXPECT_EQ(record.inDataSize, 6U);
    EXPECT_EQ(record.outDataSize, 12U);
    EXPECT_THAT(*record.hostBytes, IsEmpty());
    EXPECT_THAT(*record.defaultParameterBlock, ElementsAre(5, 4, 3, '\xE8'));
}

TEST_F(PopulateDatabase, LastDeviceStaysInTheParserWithItsFile)
{
    const std::vector<char> content = module(1);
    directory.write("MX1.bin", content);
    parser.populateDatabase(directory.path());
    ASSERT_NE(parser.dev, nullptr);
    EXPECT_EQ(parser.dev.use_count(), 1);
    EXPECT_EQ(parser.dev->privateProps.mxFileData->size(), content.size() + 1);
    EXPECT_EQ(parser.dev->privateProps.mxFileData.referenceCount(), 1);
}

TEST_F(PopulateDatabase, TranslatesWithBothDataOffsets0AndNoCustomBlock)
{
    const std::vector<char> other = module(9);
    parser.parse(other, nullptr, 10, 20);
    directory.write("MX1.bin", bufferOf(exampleGroups()).chars());
    parser.populateDatabase(directory.path());
    EXPECT_EQ(parser.inDataOffset, 0U);
    EXPECT_EQ(parser.outDataOffset, 0U);
    EXPECT_THAT(parser.aggregatedChannelCandidates,
                ElementsAre(testing::Pair("IB0", ElementsAre("22"))));
}

TEST_F(PopulateDatabase, ParseLeavesTheFileDataEmpty)
{
    const std::vector<char> content = module(1);
    EXPECT_THAT(*parser.parse(content, nullptr, 0, 0)->privateProps.mxFileData, IsEmpty());
}

} // namespace
