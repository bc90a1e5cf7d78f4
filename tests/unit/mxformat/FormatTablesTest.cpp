#include <mxformat/ChannelRecord.h>
#include <mxformat/DataSizes.h>
#include <mxformat/Datatype.h>
#include <mxformat/Groups.h>
#include <mxformat/OptionRecord.h>
#include <mxformat/ParameterRecord.h>

#include <gtest/gtest.h>

#include <numeric>
#include <set>
#include <vector>

namespace {

std::vector<std::uint8_t> countingBytes(std::size_t size)
{
    std::vector<std::uint8_t> bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

TEST(FormatTablesTest, parameterRecordHasItsLayout)
{
    ASSERT_EQ(mxformat::parameterRecordSize, 29U);
    const auto record = mxformat::readRecord<mxformat::ParameterRecord>(countingBytes(29).data());
    EXPECT_EQ(record.number, 0);
    EXPECT_EQ(record.nameId, 0x0102);
    EXPECT_EQ(record.position, 3);
    EXPECT_EQ(record.datatype, 4);
    EXPECT_EQ(record.flags, 5);
    EXPECT_EQ(record.conversion, 6);
    EXPECT_EQ(record.optionList, 7);
    EXPECT_EQ(record.minimum, 0x08090A0B0C0D0E0FU);
    EXPECT_EQ(record.maximum, 0x1011121314151617U);
    EXPECT_EQ(record.unitId, 0x1819);
    EXPECT_EQ(record.bitLength, 26);
    EXPECT_EQ(record.bitOffset, 27);
    EXPECT_EQ(record.channel, 28);
}

TEST(FormatTablesTest, channelRecordHasItsLayout)
{
    ASSERT_EQ(mxformat::channelRecordHeaderSize, 7U);
    const auto record = mxformat::readRecord<mxformat::ChannelRecord>(countingBytes(7).data());
    EXPECT_EQ(record.number, 0);
    EXPECT_EQ(record.kind, 1);
    EXPECT_EQ(record.bitLength, 3);
    EXPECT_EQ(record.bitOffset, 4);
    EXPECT_EQ(record.wordCount, 6);
    EXPECT_EQ(mxformat::channelRecordSize(0), 7U);
    EXPECT_EQ(mxformat::channelRecordSize(3), 13U);
}

TEST(FormatTablesTest, kindByteHasThreeParts)
{
    EXPECT_TRUE(mxformat::isInput(0x80));
    EXPECT_FALSE(mxformat::isInput(0x7F));
    EXPECT_EQ(mxformat::channelKind(0xE5), 5);
}

TEST(FormatTablesTest, optionsHaveTheirLayout)
{
    const auto bytes = countingBytes(10);
    EXPECT_EQ(mxformat::readRecord<mxformat::OptionListHeader>(bytes.data()).count, 1);
    EXPECT_EQ(mxformat::readRecord<mxformat::OptionRecord>(bytes.data()).value,
              0x0001020304050607U);
    EXPECT_EQ(mxformat::readRecord<mxformat::OptionRecord>(bytes.data()).textId, 0x0809);
    EXPECT_EQ(mxformat::optionListSize(2), 22U);
}

TEST(FormatTablesTest, datatypesStandAtTheirNumbers)
{
    for (std::size_t i = 0; i < mxformat::datatypes.size(); ++i) {
        EXPECT_EQ(mxformat::datatypes[i].number, i + 1);
        EXPECT_EQ(mxformat::findDatatype(static_cast<std::uint8_t>(i + 1)),
                  &mxformat::datatypes[i]);
    }
    EXPECT_EQ(mxformat::findDatatype(0), nullptr);
    EXPECT_EQ(mxformat::findDatatype(mxformat::datatypes.size() + 1), nullptr);
}

TEST(FormatTablesTest, groupsAreNamedOnce)
{
    std::set<std::uint16_t> ids;
    std::set<std::string> names;
    for (const auto& group : mxformat::groupNames) {
        ids.insert(group.id);
        names.insert(group.name);
        EXPECT_STREQ(mxformat::groupName(group.id), group.name);
    }
    EXPECT_EQ(ids.size(), mxformat::groupNames.size());
    EXPECT_EQ(names.size(), mxformat::groupNames.size());
    EXPECT_STREQ(mxformat::groupName(0x20D4), "");
}

TEST(FormatTablesTest, dataCodesStandForBytes)
{
    EXPECT_EQ(mxformat::sizeOfDataCode('D'), 4U);
    EXPECT_EQ(mxformat::sizeOfDataCode('W'), 2U);
    EXPECT_EQ(mxformat::sizeOfDataCode('B'), 1U);
    for (const char code : {'s', ' ', ',', '='}) {
        EXPECT_EQ(mxformat::sizeOfDataCode(code), 0U);
    }
    EXPECT_EQ(mxformat::sizeOfDataCode('Q'), std::nullopt);
}

} // namespace
