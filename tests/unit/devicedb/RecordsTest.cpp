#include "Records.h"

#include <TestDatabase.h>

#include <gmock/gmock.h>

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using testing::ElementsAre;
using testing::IsEmpty;

DeviceProperties ofFamily(const std::string& family, const std::string& moduleId)
{
    DeviceProperties record = device(moduleId, family + "/" + moduleId);
    record.family = family;
    return record;
}

std::vector<std::string> labels(const std::vector<DeviceProperties>& records)
{
    std::vector<std::string> result;
    for (const DeviceProperties& record : records) {
        result.push_back(record.brandLabelName);
    }
    return result;
}

class Records : public testkit::OnEachEngine
{
protected:
    DeviceDatabase database{url};
};

RUN_ON_EACH_ENGINE(Records);

TEST_P(Records, NewDatabaseIsEmpty)
{
    EXPECT_THAT(database.list(), IsEmpty());
    EXPECT_FALSE(database.find("06020001").has_value());
    EXPECT_FALSE(database.remove("06020001"));
}

TEST(RecordsInMemory, DatabasesAreSeparate)
{
    DeviceDatabase one("sqlite::memory:");
    DeviceDatabase other("sqlite::memory:");
    one.insert(device("1"));
    EXPECT_THAT(other.list(), IsEmpty());
}

TEST_P(Records, InsertReplacesEveryFieldOfTheSameModule)
{
    database.insert(device("06020001", "old"));
    DeviceProperties next = device("06020001", "new");
    next.text4 = "four";
    next.text5 = "five";
    next.inDataSize = 20;
    next.outDataSize = 30;
    next.hostBytes = new std::vector<char>{'h'};
    next.mxFileData = new std::vector<char>{'m'};
    next.defaultParameterBlock = new std::vector<char>{'d'};
    database.insert(next);
    const auto all = database.list();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].brandLabelName, "new");
    EXPECT_EQ(all[0].text4, "four");
    EXPECT_EQ(all[0].text5, "five");
    EXPECT_EQ(all[0].inDataSize, 20U);
    EXPECT_EQ(all[0].outDataSize, 30U);
    EXPECT_EQ(*all[0].hostBytes, std::vector<char>{'h'});
    EXPECT_EQ(*all[0].mxFileData, std::vector<char>{'m'});
    EXPECT_EQ(*all[0].defaultParameterBlock, std::vector<char>{'d'});
}

TEST_P(Records, SameModuleOfAnotherFamilyIsAnotherRecord)
{
    database.insert(ofFamily("kv39", "1"));
    database.insert(ofFamily("kv38", "1"));
    EXPECT_THAT(labels(database.list()), ElementsAre("kv38/1", "kv39/1"));
    EXPECT_EQ(database.find("1")->family, "kv38");
}

TEST_P(Records, IdentifiersDifferByWhatFollowsANulByte)
{
    const std::string one("1\0a", 3);
    const std::string two("1\0b", 3);
    database.insert(device(one, "a"));
    database.insert(device(two, "b"));
    EXPECT_EQ(database.find(one)->brandLabelName, "a");
    EXPECT_EQ(database.find(two)->brandLabelName, "b");
    EXPECT_FALSE(database.find("1").has_value());
}

TEST_P(Records, ListIsOrderedByTheBytesOfFamilyAndIdentifier)
{
    for (const char* id : {"b", "\xE4", "a", "B", "10", "9"}) {
        database.insert(device(id));
    }
    database.insert(ofFamily("kv37", "z"));
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("z", "10", "9", "B", "a", "b", "\xE4"));
}

TEST_P(Records, RemoveTakesTheNamedModuleOnly)
{
    database.insert(device("1"));
    database.insert(device("2"));
    EXPECT_TRUE(database.remove("1"));
    EXPECT_FALSE(database.remove("1"));
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("2"));
}

TEST_P(Records, RemoveTakesTheModuleOfEveryFamily)
{
    database.insert(ofFamily("kv38", "1"));
    database.insert(ofFamily("kv39", "1"));
    EXPECT_TRUE(database.remove("1"));
    EXPECT_FALSE(database.find("1").has_value());
}

TEST_P(Records, EmptyIdentifierIsAnIdentifier)
{
    database.insert(device("", "first"));
    database.insert(device("", "second"));
    EXPECT_EQ(database.find("")->brandLabelName, "second");
    EXPECT_THAT(labels(database.list()), ElementsAre("second"));
    EXPECT_TRUE(database.remove(""));
    EXPECT_THAT(database.list(), IsEmpty());
}

TEST_P(Records, ByteVectorsOfAFoundRecordAreItsOwn)
{
    database.insert(device("1"));
    database.find("1")->mxFileData->push_back('x');
    EXPECT_TRUE(database.find("1")->mxFileData->empty());
}

} // namespace
