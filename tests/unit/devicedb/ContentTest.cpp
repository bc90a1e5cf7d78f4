#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

namespace {

using devices::database::DeviceDatabase;
using devices::database::ModuleContent;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::failureOf;

class Content : public testkit::OnEachEngine
{
protected:
    DeviceDatabase database{url};

    int rowsOf(const std::string& table) const
    {
        int rows = -1;
        place.otherProgram() << "SELECT count(*) FROM " + table, Poco::Data::Keywords::into(rows),
            Poco::Data::Keywords::now;
        return rows;
    }

    std::vector<int> rowsOfCatalogue() const
    {
        return {rowsOf("modules"), rowsOf("channels"), rowsOf("parameters"), rowsOf("options")};
    }
};

RUN_ON_EACH_ENGINE(Content);

TEST_P(Content, ComesBackInItsOrder)
{
    database.insert(device("1"), contentNamed("x"));
    const auto content = DeviceDatabase(url).content("kv38", "1");
    ASSERT_TRUE(content.has_value());
    EXPECT_THAT(linesOf(*content),
                ElementsAre("Label x", "Order-x", "1|AI 1 x|in|W|IW0", "1|AO 1 x|out||",
                            "Limit x|1|16|20.5|-10|850|\xC2\xB0"
                            "C",
                            "Filter x|module|3|off|||", "  off|0", "  50 Hz|1"));
}

TEST_P(Content, OfAnUnknownModuleIsNone)
{
    EXPECT_FALSE(database.content("kv38", "1").has_value());
}

TEST_P(Content, MayBeEmpty)
{
    database.insert(device("1"), ModuleContent{});
    EXPECT_THAT(linesOf(database.content("kv38", "1").value()), ElementsAre("", ""));
}

TEST_P(Content, OfManyRowsIsWhole)
{
    ModuleContent content;
    for (unsigned number = 0; number < 200; ++number) {
        content.channels.push_back({number, "DI " + std::to_string(number), "in", "X", ""});
    }
    database.insert(device("1"), content);
    const auto found = database.content("kv38", "1").value();
    ASSERT_EQ(found.channels.size(), 200U);
    EXPECT_EQ(found.channels[63].name, "DI 63");
    EXPECT_EQ(found.channels[64].name, "DI 64");
    EXPECT_EQ(found.channels[199].number, 199U);
}

TEST_P(Content, IsReplacedWithTheRecord)
{
    database.insert(device("1"), contentNamed("old"));
    database.insert(device("1"), contentNamed("new"));
    EXPECT_EQ(database.content("kv38", "1")->label, "Label new");
    EXPECT_THAT(rowsOfCatalogue(), ElementsAre(1, 2, 2, 2));
}

TEST_P(Content, GoesWithARecordThatComesWithoutIt)
{
    database.insert(device("1"), contentNamed("old"));
    database.insert(device("1"));
    EXPECT_THAT(rowsOfCatalogue(), ElementsAre(0, 0, 0, 0));
}

TEST_P(Content, GoesWithItsRecord)
{
    database.insert(device("1"), contentNamed("a"));
    database.insert(device("2"), contentNamed("b"));
    database.remove("1");
    EXPECT_THAT(rowsOfCatalogue(), ElementsAre(1, 2, 2, 2));
    EXPECT_EQ(database.content("kv38", "2")->label, "Label b");
}

TEST_P(Content, OfTwoFamiliesIsApart)
{
    auto other = device("1");
    other.family = "kv39";
    database.insert(device("1"), contentNamed("38"));
    database.insert(other, contentNamed("39"));
    EXPECT_TRUE(database.remove("kv38", "1"));
    EXPECT_FALSE(database.remove("kv38", "1"));
    EXPECT_FALSE(database.content("kv38", "1").has_value());
    EXPECT_EQ(database.content("kv39", "1")->label, "Label 39");
}

TEST_P(Content, ThatIsNoUtf8CostsItsRecordAlone)
{
    ModuleContent bad = contentNamed("x");
    bad.channels[1].name = "AO \xB1";
    auto transaction = database.beginTransaction();
    database.insert(device("1"), contentNamed("a"));
    EXPECT_EQ(failureOf([&] { database.insert(device("2"), bad); }),
              "Cannot write to device database " + place.name() +
                  ": byte 4 of a text of 4 bytes in the catalogue is not UTF-8 without NUL");
    database.insert(device("3"), contentNamed("c"));
    transaction.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("1", "3"));
    EXPECT_THAT(rowsOfCatalogue(), ElementsAre(2, 4, 4, 4));
}

TEST_P(Content, WithANulByteIsRefused)
{
    ModuleContent bad = contentNamed("x");
    bad.parameters[1].options[0].text = std::string("o\0f", 3);
    EXPECT_THAT(failureOf([&] { database.insert(device("2"), bad); }),
                HasSubstr("byte 2 of a text of 3 bytes"));
    EXPECT_THAT(storedIds(url), IsEmpty());
}

TEST_P(Content, IsNotStoredWithoutItsRecord)
{
    place.refuseModuleBad();
    EXPECT_EQ(failureOf([&] { database.insert(device("bad"), contentNamed("x")); }),
              "Cannot write to device database " + place.name() + ": " + place.refusal());
    EXPECT_THAT(rowsOfCatalogue(), ElementsAre(0, 0, 0, 0));
}

TEST_P(Content, RecordIsNotStoredWithoutIt)
{
    place.execute("DROP TABLE options");
    EXPECT_THAT(failureOf([&] { database.insert(device("1"), contentNamed("x")); }),
                HasSubstr("options"));
    EXPECT_THAT(storedIds(url), IsEmpty());
    EXPECT_EQ(rowsOf("channels"), 0);
}

TEST_P(Content, HoldsTextsThatLookLikeSql)
{
    const std::string hostile = "'); DROP TABLE modules; -- $1 ? {} \\ \"";
    database.insert(device("1"), contentNamed(hostile));
    EXPECT_EQ(database.content("kv38", "1")->label, "Label " + hostile);
    EXPECT_EQ(rowsOf("modules"), 1);
}

} // namespace
