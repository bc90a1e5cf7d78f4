#include "../ExampleModules.h"
#include "ChannelTables.h"

#include <gmock/gmock.h>

// A value after an open byte b lies at: 1 byte b + 1; 2 bytes the even one of b + 1 and b + 2;
// 4 bytes b + 1 plus the remainder of b + 1 by 4; 8 bytes b + 1 plus its remainder by 8.

namespace {

using mxmodule::ChannelMap;
using testing::ElementsAre;
using testing::IsEmpty;

ChannelMap counters(unsigned inOffset, unsigned outOffset)
{
    return exampleModule("MX0602.bin").at({inOffset, outOffset}).channelMap();
}

// At 0 its inputs lie at 0, 0, 2 to 5, 6, 8 to 9, 10, 14 to 21 (channels 0 to 6), its outputs at 0,
// 1, 2, 6 to 9 (7 to 10); 22 and 10 bytes of data.
TEST(Displacement, isNoneAtMultiplesOfEight)
{
    EXPECT_THAT(counters(0, 0).displaced(), IsEmpty());
    EXPECT_THAT(counters(8, 800).displaced(), IsEmpty());
    EXPECT_THAT(counters(0, 0).outside(), IsEmpty());
    EXPECT_THAT(counters(8, 800).outside(), IsEmpty());
}

// Inputs from byte 1: 4 bytes after byte 1 at 2 + 2 = 4, not 3; then bits at 8, not 7; 2 bytes at
// 10, not 9; bits at 12, not 11; 8 bytes after byte 12 at 13 + 5 = 18 to 25, not 15 to 22.
TEST(Displacement, isOfChannelsThatAnAlignmentMovesOtherwise)
{
    EXPECT_THAT(counters(1, 0).displaced(), ElementsAre(2, 3, 4, 5, 6));
    EXPECT_THAT(counters(1, 0).outside(), ElementsAre(6)); // data: bytes 1 to 22
}

// Inputs from byte 4: 4 bytes after byte 4 at 5 + 1 = 6, as at 0; only the 8 bytes after byte 14 at
// 15 + 7 = 22 to 29, not 18 to 25.
TEST(Displacement, mayBeOfTheLastChannelAlone)
{
    EXPECT_THAT(counters(4, 4).displaced(), ElementsAre(6));
    EXPECT_THAT(counters(4, 4).outside(), ElementsAre(6)); // data: bytes 4 to 25
}

// Outputs from byte 1: 4 bytes after byte 3 at 4 + 0 = 4 to 7, not 7 to 10.
TEST(Displacement, mayBeWithinTheData)
{
    EXPECT_THAT(counters(0, 1).displaced(), ElementsAre(10));
    EXPECT_THAT(counters(0, 1).outside(), IsEmpty());
}

// Inputs: the 4 bytes lie as at 0 if the offset is a multiple of 4, the 8 bytes if it is one of 8.
TEST(Displacement, endsAtTheNextByteThatAlignsLikeByteZero)
{
    EXPECT_EQ(counters(0, 0).undisplacedFrom(true), 0U);
    EXPECT_EQ(counters(1, 0).undisplacedFrom(true), 8U);
    EXPECT_EQ(counters(9, 0).undisplacedFrom(true), 16U);
    EXPECT_EQ(counters(0, 1).undisplacedFrom(false), 4U);
    EXPECT_EQ(counters(0, 5).undisplacedFrom(false), 8U);
    EXPECT_EQ(counters(0, 5).undisplacedFrom(true), 0U);
}

// The addresses begin again at 0: bits at 4294967295, 4 bytes at 0 + 0, not 1.
TEST(Displacement, isFoundWhereAddressesBeginAgain)
{
    EXPECT_THAT(counters(4294967295U, 0).displaced(), testing::Contains(2));
    EXPECT_THAT(counters(4294967295U, 0).outside(), ElementsAre(2, 3, 4, 5, 6));
    EXPECT_EQ(counters(4294967295U, 0).undisplacedFrom(true), 4294967296U);
}

TEST(Displacement, isNoneOfBitsAlone)
{
    for (unsigned offset = 0; offset < 9; ++offset) {
        const ChannelMap map =
            mapOfRecords({{1, 0x85, 1, 0}, {2, 0x85, 1, 1}, {3, 0x05, 1, 0}}, "", {offset, offset});
        EXPECT_THAT(map.displaced(), IsEmpty());
        EXPECT_EQ(map.undisplacedFrom(true), offset);
        EXPECT_EQ(map.undisplacedFrom(false), offset);
    }
}

// Channel 6, a bit, is omitted but takes byte 0; the word after it lies at byte 2. From byte 1 on
// the bit takes byte 1, and the word again lies at byte 2.
TEST(Displacement, countsThePlaceOfAnOmittedChannel)
{
    const std::vector<testkit::ChannelRecord> records = {{6, 0x85, 1}, {1, 0x82, 16}};
    EXPECT_THAT(mapOfRecords(records, "-", {0, 0}).displaced(), IsEmpty());
    EXPECT_THAT(mapOfRecords(records, "-", {1, 0}).displaced(), ElementsAre(0));
    EXPECT_EQ(mapOfRecords(records, "-", {1, 0}).undisplacedFrom(true), 2U);
}

// The same with the word omitted.
TEST(Displacement, isNotThatOfAnOmittedChannel)
{
    const ChannelMap map = mapOfRecords({{1, 0x85, 1}, {6, 0x82, 16}}, "-", {1, 0});
    EXPECT_THAT(map.displaced(), IsEmpty());
    EXPECT_EQ(map.undisplacedFrom(true), 1U);
}

// The module has no input data. A field without bits is nowhere.
TEST(Displacement, outsideAreBitsAlone)
{
    const ChannelMap map = mapOfRecords({{1, 0x85, 0}, {2, 0x85, 1}});
    EXPECT_EQ(map.input().size, 0U);
    EXPECT_THAT(map.outside(), ElementsAre(1));
}

} // namespace
