// The result of parseChannel for a record of group 0x20d0 and the names of group 0x20d7.

#include "DeviceView.h"
#include "Failure.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::Pair;
using testkit::Bytes;
using testkit::ChannelRecord;
using testkit::failureOf;
using testkit::MxBuffer;
using testkit::ParserAccess;

using ChannelP = ParserAccess::ChannelP;

class ChannelRecords : public testing::Test
{
protected:
    // Names: channel 0 "zero", 1 "-", 2 the empty text, 9 a text that is missing.
    void SetUp() override
    {
        buffer =
            MxBuffer()
                .group(0x20D7, {0, 0, 100, 1, 0, 101, 2, 0, 102, 9, 0, 199, 0, 0, 101})
                .group(0x20D3, testkit::textTablePayload({{100, "zero"}, {101, "-"}, {102, ""}}))
                .chars();
        parser.index(buffer);
        parser.dev = std::make_shared<ParserAccess::DeviceP>();
    }

    std::uint32_t parse(const ChannelRecord& record) { return parser.parseChannel(keep(record)); }

    const std::uint8_t* keep(const ChannelRecord& record)
    {
        kept.push_back(record.bytes());
        return kept.back().data();
    }

    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const auto* channel : attributesOf<ChannelP>(*parser.dev, 9)) {
            all.push_back(channel->name);
        }
        return all;
    }

    std::vector<char> buffer;
    std::vector<Bytes> kept;
    ParserAccess parser;
};

TEST_F(ChannelRecords, lengthIs7And2PerWord)
{
    EXPECT_EQ(parse({0, 0x85, 1, 0, 0}), 7U);
    EXPECT_EQ(parse({0, 0x85, 1, 0, 3}), 13U);
    EXPECT_EQ(parse({0, 0x85, 1, 0, 255}), 517U);
}

TEST_F(ChannelRecords, theFirstEntryOfANumberGivesTheName)
{
    parse({0});
    EXPECT_THAT(names(), ElementsAre("zero"));
}

TEST_F(ChannelRecords, aChannelWithoutNameIsCalledByItsNumber)
{
    parse({2});
    parse({33});
    EXPECT_THAT(names(), ElementsAre("channel_2", "channel_33"));
}

TEST_F(ChannelRecords, withoutNameGroupEveryChannelIsCalledByItsNumber)
{
    parser.groupIndex.erase(0x20D7);
    parse({0});
    EXPECT_THAT(names(), ElementsAre("channel_0"));
}

TEST_F(ChannelRecords, anEmptyNameGroupNamesNothing)
{
    const std::vector<char> other = MxBuffer().group(0x20D7, {}).chars();
    parser.index(other);
    parse({0});
    EXPECT_THAT(names(), ElementsAre("channel_0"));
}

TEST_F(ChannelRecords, aChannelNamedDashIsDroppedButHasTakenItsPlace)
{
    EXPECT_EQ(parse({1, 0x82, 16, 0, 1}), 9U);
    parse({0, 0x82, 16, 0, 0});
    const auto channels = attributesOf<ChannelP>(*parser.dev, 9);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_EQ(channels[0]->iecSymbol, "IW2");
    EXPECT_EQ(channels[0]->id, "0");
    EXPECT_EQ(parser.nextObjectId, 1U);
}

TEST_F(ChannelRecords, aDroppedBitIsNoCandidate)
{
    parse({1});
    EXPECT_TRUE(parser.aggregatedChannelCandidates.empty());
}

TEST_F(ChannelRecords, aMissingNameTextLeavesNothingBehind)
{
    EXPECT_EQ(failureOf([&] { parse({9}); }), "Cannot find requested text string: ID = 199");
    EXPECT_TRUE(parser.dev->attributes.empty());
    EXPECT_EQ(parser.inBitPosition, 0U);
    EXPECT_EQ(parser.nextObjectId, 0U);
}

TEST_F(ChannelRecords, singleBitsAreFiledUnderTheByteThatHoldsThem)
{
    parser.nextObjectId = 17;
    parser.inBytePosition = 3;
    parse({3, 0x85, 1, 2, 0}); // IX3_2
    parse({4, 0x85, 1, 3, 0});
    parse({5, 0x05, 1, 5, 0}); // QX0_5
    parse({6, 0x85, 2, 0, 0}); // a bit field has none
    EXPECT_THAT(parser.aggregatedChannelCandidates,
                ElementsAre(Pair("IB3", ElementsAre("17", "18")), Pair("QB0", ElementsAre("19"))));
}

TEST_F(ChannelRecords, aLastNameEntryCutShortIsReadWithTheBytesAfterIt)
{
    // The entry's text identifier is the checksum, 0: group 0x20d3 holds a text 0.
    const std::vector<char> other = MxBuffer()
                                        .group(0x20D7, {5})
                                        .group(0x20D3, testkit::textTablePayload({{0, "text 0"}}))
                                        .chars();
    parser.index(other);
    parse({5});
    EXPECT_THAT(names(), ElementsAre("text 0"));
}

TEST(ChannelRecordsDeath, missingDeviceAndNullRecordAreFailedAssertions)
{
    ParserAccess parser;
    const Bytes record = ChannelRecord{}.bytes();
    const std::string file = "vendor/mx/src/mxparser_kv38/.*";
    EXPECT_DEATH(parser.parseChannel(record.data()), file + "Assertion `this->dev' failed");
    parser.dev = std::make_shared<ParserAccess::DeviceP>();
    EXPECT_DEATH(parser.parseChannel(nullptr), file + "Assertion `x20D0' failed");
}

} // namespace
