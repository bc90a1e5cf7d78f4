#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <thread>

namespace {

using devices::database::Comparison;
using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::database::ModuleToStore;
using devices::database::PagedQuery;
using Poco::Data::Keywords::now;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::failureOf;

// Queries that people seldom make, of modules of which all but one are in the index.
class SearchEdges : public testkit::OnEachEngine
{
protected:
    SearchEdges()
    {
        std::vector<DeviceProperties> records;
        std::vector<ModuleContent> contents;
        for (int number = 1000; number < 1300; ++number) {
            records.push_back(device(std::to_string(number)));
            contents.push_back(contentNamed("N" + std::to_string(number)));
        }
        contents[7].label = "two\nlines";
        contents[7].parameters[0].unit = "m\ns";
        std::vector<ModuleToStore> modules;
        for (std::size_t i = 0; i < records.size(); ++i) {
            modules.push_back({&records[i], &contents[i]});
        }
        database.insertAll(modules);
        database.insert(device("2000"), contents[7]);
    }

    std::vector<std::string> found(const std::string& field, Comparison comparison,
                                   const std::string& value)
    {
        return moduleIds(database.search({{}, {{field, comparison, value}}}));
    }

    DeviceDatabase database{url};
};

RUN_ON_EACH_ENGINE(SearchEdges);

TEST_P(SearchEdges, EndsWithWordsAndConditionsOfAnyNumberAndLength)
{
    EXPECT_THAT(database.search({{std::string(200000, 'n')}, {}}), IsEmpty());
    PagedQuery many;
    for (int i = 0; i < 600; ++i) {
        many.words.push_back("n" + std::to_string(1000 + i % 10));
        many.conditions.push_back({"in_bytes", Comparison::Greater, "1"});
    }
    EXPECT_THAT(database.searchPage(many), IsEmpty());
    many.words = {"n1005"};
    EXPECT_THAT(moduleIds(database.searchPage(many)), ElementsAre("1005"));
}

TEST_P(SearchEdges, ComparesWithExtremeNumbers)
{
    for (const char* const low : {"-9223372036854775808", "-1", "0"}) {
        EXPECT_EQ(found("in_bytes", Comparison::Greater, low).size(), 301U) << low;
        EXPECT_THAT(found("in_bytes", Comparison::Less, low), IsEmpty()) << low;
    }
    for (const char* const high : {"9223372036854775807", "4294967296"}) {
        EXPECT_EQ(found("in_bytes", Comparison::Less, high).size(), 301U) << high;
        EXPECT_THAT(found("in_bytes", Comparison::Greater, high), IsEmpty()) << high;
    }
}

TEST_P(SearchEdges, FindsTextsWithEndsOfLines)
{
    EXPECT_THAT(found("label", Comparison::Equal, "two\nlines"), ElementsAre("1007", "2000"));
    EXPECT_THAT(found("label", Comparison::Contains, "o\nl"), ElementsAre("1007", "2000"));
    EXPECT_THAT(found("label", Comparison::Contains, "\n"), ElementsAre("1007", "2000"));
    EXPECT_THAT(found("unit", Comparison::Equal, "m\ns"), ElementsAre("1007", "2000"));
}

TEST_P(SearchEdges, IgnoresWordsThatAreAccentsAlone)
{
    const std::string accent = "\xCC\x88"; // combining diaeresis
    EXPECT_EQ(database.search({{accent}, {}}).size(), 301U);
    EXPECT_THAT(moduleIds(database.search({{accent, "n1005"}, {}})), ElementsAre("1005"));
}

TEST_P(SearchEdges, ComparesWithWholeNumbersAlone)
{
    for (const std::string& value :
         std::vector<std::string>{"1,000", "-", "1 000", "", "2x", std::string("2\0", 2)}) {
        EXPECT_THAT(failureOf([&] { found("in_bytes", Comparison::Less, value); }),
                    HasSubstr("compared with a whole number"))
            << value;
    }
}

TEST_P(SearchEdges, ComparesWithTextsAlone)
{
    for (const std::string& bytes : {std::string("two\0lines", 9), std::string("\xC3")}) {
        for (const Comparison comparison :
             {Comparison::Equal, Comparison::Contains, Comparison::Less}) {
            EXPECT_THAT(failureOf([&] { found("label", comparison, bytes); }),
                        HasSubstr("field \"label\" is compared with a text of UTF-8 without NUL"));
        }
        EXPECT_THAT(database.search({{bytes}, {}}), IsEmpty());
    }
}

// With SQL: it does not wait for the library's writers on PostgreSQL, nor they for it.
TEST_P(SearchEdges, AnotherProgramMayRemoveAModuleMeanwhile)
{
    Poco::Data::Session other = place.otherProgram();
    const std::string bytes = place.engine() == testkit::Engine::Sqlite ? "BLOB" : "BYTEA";
    if (place.engine() == testkit::Engine::Sqlite) {
        other << "PRAGMA foreign_keys = ON", now;
    }
    other.begin();
    other << "DELETE FROM device_properties WHERE module_id = CAST('2000' AS " + bytes + ")", now;
    auto insertion = std::async(std::launch::async,
                                [this] { database.insert(device("3000"), contentNamed("N3000")); });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    other.commit();
    EXPECT_NO_THROW(insertion.get());
    EXPECT_THAT(moduleIds(database.search({{"n3000"}, {}})), ElementsAre("3000"));
    EXPECT_EQ(storedIds(url).size(), 301U);
}

} // namespace
