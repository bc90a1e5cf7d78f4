#include "ContainerAccess.h"
#include "FailedAssertion.h"
#include "Failure.h"
#include "MxBuffer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr std::uint16_t group = 0x0001;

// A reader over one group of datasets, its end the end of an allocation.
class TavoDataset : public testing::Test
{
protected:
    void load(const std::string& payload)
    {
        data = testkit::MxBuffer().group(group, testkit::hexBytes(payload)).chars();
        reader.index(data);
        length = 777;
    }

    const std::uint8_t* find(std::uint8_t id)
    {
        return reader.getTavoDatasetFromGroup(group, id, &length);
    }

    void expectAbsent(std::uint8_t id)
    {
        EXPECT_EQ(find(id), nullptr);
        EXPECT_EQ(length, 777U);
    }

    std::vector<char> data;
    testkit::ContainerAccess reader;
    std::uint32_t length = 0;
};

TEST_F(TavoDataset, GivesDataAndLength)
{
    load("07 02 ee aabb 0000");
    const std::uint8_t* found = find(7);
    EXPECT_EQ(found, reader.getGroup(group, nullptr) + 3);
    EXPECT_EQ(length, 2U);
    EXPECT_EQ(found[0], 0xAA);
}

TEST_F(TavoDataset, RecordsStandBackToBack)
{
    load("01 00 00 0000"
         "02 03 00 010203 0000"
         "07 01 00 55 0000");
    EXPECT_EQ(*find(7), 0x55);
    EXPECT_EQ(length, 1U);
    // Looked up again, an empty one, and the first in the list.
    EXPECT_NE(find(1), nullptr);
    EXPECT_EQ(length, 0U);
}

TEST_F(TavoDataset, FirstOfARepeatedIdentifierCounts)
{
    load("07 01 00 11 0000 07 01 00 22 0000");
    EXPECT_EQ(*find(7), 0x11);
}

TEST_F(TavoDataset, PayloadOf5BytesHoldsNone)
{
    load("07 00 00 0000");
    expectAbsent(7);
}

TEST_F(TavoDataset, PayloadOf6BytesHoldsOne)
{
    load("07 01 00 aa 0000");
    EXPECT_NE(find(7), nullptr);
    EXPECT_EQ(length, 1U);
}

TEST_F(TavoDataset, LastRecordOf5BytesIsNotLookedAt)
{
    load("01 01 00 aa 0000 07 00 00 0000"); // 6 + 5 < 11 does not hold
    expectAbsent(7);
    load("01 01 00 aa 0000 07 00 00 0000 00");
    EXPECT_NE(find(7), nullptr);
}

TEST_F(TavoDataset, LengthByteOf80EndsTheListForTheRecordsAfterIt)
{
    load("01 80 00 0000 07 01 00 aa 0000");
    expectAbsent(7);
}

TEST_F(TavoDataset, LengthByteOf80EndsTheListEvenInTheWantedRecord)
{
    load("07 80 00 0000 00");
    expectAbsent(7);
    load("07 ff 00 0000 00");
    expectAbsent(7);
}

TEST_F(TavoDataset, LengthByteOf7FIsALength)
{
    load("07 7f 00 0000 00");
    EXPECT_NE(find(7), nullptr);
    EXPECT_EQ(length, 127U);
}

TEST_F(TavoDataset, RecordThatRunsOutOfThePayloadEndsTheList)
{
    load("01 7f 00 0000 07 01 00 aa 0000");
    expectAbsent(7);
}

TEST_F(TavoDataset, UnknownIdentifierIsNullWithoutAFailure)
{
    load("01 01 00 aa 0000");
    expectAbsent(7);
}

TEST_F(TavoDataset, MissingGroupFails)
{
    load("01 01 00 aa 0000");
    EXPECT_EQ(testkit::failureOf([&] { reader.getTavoDatasetFromGroup(0x00AB, 1, &length); }),
              "Parser::getTavoDatasetFromGroup(): No such group: 00ab");
}

TEST_F(TavoDataset, EveryCutOfAPayloadIsReadWithinTheBuffer)
{
    const std::string whole = "0103000102030000070200aabb0000"; // 8 + 7 bytes
    for (std::size_t cut = 0; cut <= whole.size() / 2; ++cut) {
        load(whole.substr(0, 2 * cut));
        // The wanted record begins at 8: 8 + 5 < cut.
        EXPECT_EQ(find(7) != nullptr, cut > 13) << cut;
    }
}

const std::string lenAssertion = testkit::failedAssertion(
    "vendor/mx/src/mxparser",
    "const uint8_t* devices::parser::mx::Parser::getTavoDatasetFromGroup(uint16_t, uint8_t, "
    "uint32_t*)",
    "len");

using TavoDatasetDeathTest = TavoDataset;

TEST_F(TavoDatasetDeathTest, NullLengthIsAFailedAssertion)
{
    load("01 01 00 aa 0000");
    EXPECT_DEATH(reader.getTavoDatasetFromGroup(group, 1, nullptr), lenAssertion);
}

TEST_F(TavoDatasetDeathTest, NullLengthIsSeenBeforeTheMissingGroup)
{
    load("01 01 00 aa 0000");
    EXPECT_DEATH(reader.getTavoDatasetFromGroup(0x0999, 1, nullptr), lenAssertion);
}

} // namespace
