#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <gmock/gmock.h>

namespace {

using devices::database::Comparison;
using devices::database::DeviceDatabase;
using devices::database::ModuleCondition;
using devices::database::moduleFields;
using devices::database::ModuleKey;
using devices::database::PagedQuery;
using devices::database::SearchExplanation;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::failureOf;

class Search : public testkit::OnEachEngine
{
protected:
    Search()
    {
        auto small = device("0000000a", "small");
        small.inDataSize = 1;
        small.outDataSize = 0;
        small.mxFileData = new std::vector<char>(101, 'x'); // 100 bytes on disk
        auto content = contentNamed("Small");
        content.channels = {{1, "DI 1", "in", "X", "IX0.0"}};
        content.parameters.clear();
        database.insert(small, content);
        auto large = device("0000000b", "large");
        large.inDataSize = 4000000000;
        large.outDataSize = 7;
        large.defaultParameterBlock = new std::vector<char>(33, 'p');
        database.insert(large, contentNamed("L\xC3\x84RGE \xC2\xB1"
                                            "10 V"));
        database.insert(device("0000000c", "unknown inside"));
    }

    std::vector<std::string> found(const std::vector<std::string>& words,
                                   const std::vector<ModuleCondition>& conditions = {})
    {
        return moduleIds(database.search({words, conditions}));
    }

    std::vector<std::string> where(const std::string& field, Comparison comparison,
                                   const std::string& value)
    {
        return found({}, {{field, comparison, value}});
    }

    DeviceDatabase database{url};
};

RUN_ON_EACH_ENGINE(Search);

TEST_P(Search, ForNothingFindsEverything)
{
    const auto all = database.search({});
    ASSERT_THAT(moduleIds(all), ElementsAre("0000000a", "0000000b", "0000000c"));
    EXPECT_EQ(all[0].family, "kv38");
    EXPECT_EQ(all[0].brandLabelName, "small");
    EXPECT_EQ(all[0].mxFileSize, 100U);
    EXPECT_EQ(all[1].inDataSize, 4000000000U);
    EXPECT_EQ(all[1].outDataSize, 7U);
    EXPECT_EQ(all[1].parameterBlockSize, 33U);
    EXPECT_EQ(all[1].mxFileSize, 0U);
    EXPECT_TRUE(all[1].hasContent);
    EXPECT_FALSE(all[2].hasContent);
}

TEST_P(Search, WordsAreFoundInEveryNameWhateverTheirCase)
{
    EXPECT_THAT(found({"LABEL"}), ElementsAre("0000000a", "0000000b"));
    EXPECT_THAT(found({"order-small"}), ElementsAre("0000000a"));
    EXPECT_THAT(found({"di 1"}), ElementsAre("0000000a"));
    EXPECT_THAT(found({"filter"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"l\xC3\xA4rge"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"\xC2\xB1"
                       "10"}),
                ElementsAre("0000000b"));
}

TEST_P(Search, AccentsAreIgnoredInTextAndWord)
{
    EXPECT_THAT(found({"large"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"LARGE"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"sm\xC3\xA4ll"}), ElementsAre("0000000a"));
}

TEST_P(Search, WordsAreFoundInOptions)
{
    EXPECT_THAT(found({"50 hz"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"hz", "limit"}), ElementsAre("0000000b"));
}

TEST_P(Search, PartsOfOneAndTwoCharactersAreFound)
{
    EXPECT_THAT(found({"d"}), ElementsAre("0000000a", "0000000b"));
    EXPECT_THAT(found({"hz"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"\xC2\xB1"}), ElementsAre("0000000b"));
}

TEST_P(Search, BestMatchesComeFirst)
{
    const auto stored = [&](const std::string& id, const auto& change) {
        devices::database::ModuleContent content;
        change(content);
        database.insert(device(id), content);
    };
    stored("00000001", [](auto& content) {
        content.parameters.emplace_back().options = {{"red lamp", "1"}};
    });
    stored("00000002", [](auto& content) { content.parameters.emplace_back().name = "Lamp red"; });
    stored("00000003", [](auto& content) { content.channels = {{1, "Red lamp", "out", "X", ""}}; });
    stored("00000004", [](auto& content) { content.label = "Lamp"; });
    stored("00000005", [](auto& content) { content.orderCode = "LAMP-RED"; });
    stored("00000006", [](auto& content) {
        content.label = "Red";
        content.channels = {{1, "Lamp", "out", "X", ""}};
    });
    EXPECT_THAT(found({"lamp"}), ElementsAre("00000004", "00000005", "00000003", "00000006",
                                             "00000002", "00000001"));
    EXPECT_THAT(found({"lamp", "red"}),
                ElementsAre("00000005", "00000003", "00000006", "00000002", "00000001"));
    EXPECT_THAT(found({"red", "lamp"}), found({"lamp", "red"}));
}

TEST_P(Search, TextsOfAnyLengthAreSearchedFor)
{
    std::string text = "large ";
    for (int number = 0; number < 20000; ++number) {
        text += std::to_string(number);
    }
    EXPECT_THAT(found({text}), IsEmpty());
    EXPECT_THAT(where("label", Comparison::Contains, text), IsEmpty());
    EXPECT_THAT(found(std::vector<std::string>(3000, "label")),
                ElementsAre("0000000a", "0000000b"));
}

TEST_P(Search, PagesFollowEachOther)
{
    PagedQuery query;
    query.limit = 2;
    EXPECT_THAT(moduleIds(database.searchPage(query)), ElementsAre("0000000a", "0000000b"));
    query.after = ModuleKey{"kv38", "0000000b"};
    EXPECT_THAT(moduleIds(database.searchPage(query)), ElementsAre("0000000c"));
    query.words = {"label"};
    query.after = ModuleKey{"kv38", "0000000a"};
    EXPECT_THAT(moduleIds(database.searchPage(query)), ElementsAre("0000000b"));
}

TEST_P(Search, PageAfterAModuleThatIsNotInTheListIsRefused)
{
    PagedQuery query;
    query.words = {"label"};
    query.after = ModuleKey{"kv38", "0000000c"};
    const std::string refusal = "Cannot read device database " + place.name() +
                                ": module 0000000c, after which the list is to go on, is not in it";
    try {
        database.searchPage(query);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const devices::database::NotInList& failure) {
        EXPECT_EQ(failure.what(), refusal);
    }
}

// Also where no index is searched.
TEST_P(Search, ListInTheOrderOfKeysGoesOnAfterItsOwnModules)
{
    PagedQuery query;
    query.after = ModuleKey{"kv38", "0000000d"};
    EXPECT_THROW(database.searchPage(query), devices::database::NotInList);
    query.conditions = {{"label", Comparison::NotEqual, "LABEL 0000000a"}};
    query.after = ModuleKey{"kv38", "0000000c"}; // without content
    EXPECT_THROW(database.searchPage(query), devices::database::NotInList);
    EXPECT_EQ(database.explain(query).source, SearchExplanation::Source::Order);
}

TEST_P(Search, IsExplained)
{
    PagedQuery query;
    EXPECT_EQ(database.explain(query).source, SearchExplanation::Source::Order);
    query.words = {"L\xC3\xA4rge", ""};
    const auto explained = database.explain(query);
    EXPECT_EQ(explained.source, SearchExplanation::Source::Index);
    EXPECT_THAT(explained.words, ElementsAre("large"));
    EXPECT_THAT(explained.parts, ElementsAre("lar", "rge"));
    EXPECT_EQ(explained.blocks, 0U);
    EXPECT_EQ(explained.notIndexed, 3U);
}

TEST_P(Search, CountsModules)
{
    EXPECT_EQ(database.counts().modules, 3U);
    EXPECT_EQ(database.counts().withContent, 2U);
}

TEST_P(Search, EveryWordMustBeThere)
{
    EXPECT_THAT(found({"label", "limit"}), ElementsAre("0000000b"));
    EXPECT_THAT(found({"filter", "di"}), IsEmpty());
}

TEST_P(Search, SignsOfSqlAreOrdinary)
{
    for (const char* word : {"%", "_", "'", "\\", "$1", "?", "' OR 1=1 --"}) {
        EXPECT_THAT(found({word}), IsEmpty()) << word;
        EXPECT_THAT(where("label", Comparison::Equal, word), IsEmpty()) << word;
    }
    EXPECT_EQ(database.search({}).size(), 3U);
}

TEST_P(Search, NumbersAreComparedAsNumbers)
{
    EXPECT_THAT(where("in_bytes", Comparison::Greater, "4"), ElementsAre("0000000b"));
    EXPECT_THAT(where("in_bytes", Comparison::Equal, "4000000000"), ElementsAre("0000000b"));
    EXPECT_THAT(where("in_bytes", Comparison::LessOrEqual, "2"),
                ElementsAre("0000000a", "0000000c"));
    EXPECT_THAT(where("out_bytes", Comparison::NotEqual, "3"), ElementsAre("0000000a", "0000000b"));
    EXPECT_THAT(where("parameter_bytes", Comparison::GreaterOrEqual, "33"),
                ElementsAre("0000000b"));
    EXPECT_THAT(where("file_bytes", Comparison::Equal, "100"), ElementsAre("0000000a"));
    EXPECT_THAT(where("channels", Comparison::Less, "2"), ElementsAre("0000000a", "0000000c"));
    EXPECT_THAT(where("parameters", Comparison::Equal, "2"), ElementsAre("0000000b"));
}

TEST_P(Search, TextsAreComparedAsTheyStand)
{
    EXPECT_THAT(where("module_id", Comparison::Equal, "0000000b"), ElementsAre("0000000b"));
    EXPECT_THAT(where("family", Comparison::Equal, "kv38"), ElementsAre("0000000a", "0000000b"));
    EXPECT_THAT(where("label", Comparison::Contains, "Sma"), ElementsAre("0000000a"));
    EXPECT_THAT(where("label", Comparison::Contains, "sma"), IsEmpty());
    EXPECT_THAT(where("order_code", Comparison::NotEqual, "Order-Small"), ElementsAre("0000000b"));
}

TEST_P(Search, FieldsOfPartsHoldForAnyOfThem)
{
    EXPECT_THAT(where("channel", Comparison::Equal, "DI 1"), ElementsAre("0000000a"));
    EXPECT_THAT(where("direction", Comparison::Equal, "out"), ElementsAre("0000000b"));
    EXPECT_THAT(where("size_letter", Comparison::Equal, "X"), ElementsAre("0000000a"));
    EXPECT_THAT(where("parameter", Comparison::Contains, "Limit"), ElementsAre("0000000b"));
    EXPECT_THAT(where("unit", Comparison::Equal,
                      "\xC2\xB0"
                      "C"),
                ElementsAre("0000000b"));
    EXPECT_THAT(where("option", Comparison::Equal, "50 Hz"), ElementsAre("0000000b"));
}

TEST_P(Search, EveryFieldCanBeAsked)
{
    for (const auto& field : moduleFields()) {
        for (const auto comparison :
             {Comparison::Equal, Comparison::NotEqual, Comparison::Less, Comparison::LessOrEqual,
              Comparison::Greater, Comparison::GreaterOrEqual, Comparison::Contains}) {
            if (!field.isNumber || comparison != Comparison::Contains) {
                EXPECT_LE(where(field.name, comparison, "1").size(), 3U) << field.name;
            }
        }
    }
}

TEST_P(Search, ConditionsAndWordsHoldTogether)
{
    EXPECT_THAT(found({"label"}, {{"in_bytes", Comparison::Greater, "0"},
                                  {"direction", Comparison::Equal, "out"}}),
                ElementsAre("0000000b"));
}

TEST_P(Search, UnknownFieldsAndWrongValuesAreRefused)
{
    const std::string cannot = "Cannot read device database " + place.name() + ": ";
    EXPECT_EQ(failureOf([&] { where("colour", Comparison::Equal, "red"); }),
              cannot + "there is no field \"colour\"");
    EXPECT_EQ(failureOf([&] { where("in_bytes", Comparison::Equal, "four"); }),
              cannot + "field \"in_bytes\" is compared with a whole number, not with \"four\"");
    EXPECT_EQ(failureOf([&] { where("in_bytes", Comparison::Contains, "4"); }),
              cannot + "field \"in_bytes\" is compared with a whole number, not with \"4\"");
}

TEST_P(Search, VisitsTheRecordsThatThereStillAre)
{
    const auto all = database.search({});
    database.remove("0000000b");
    std::vector<std::string> visited;
    database.visit(all, [&](const auto& record) { visited.push_back(record.moduleIdText); });
    EXPECT_THAT(visited, ElementsAre("0000000a", "0000000c"));
}

} // namespace
