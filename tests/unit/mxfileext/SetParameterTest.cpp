#include "CompanionTest.h"

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::ParameterRecord;

using SetParameterTest = CompanionTest;

ParameterRecord recordOf(std::uint8_t datatype, std::uint8_t position = 4)
{
    ParameterRecord record;
    record.number = 7;
    record.datatype = datatype;
    record.position = position;
    return record;
}

TEST_F(SetParameterTest, writesBigEndian)
{
    EXPECT_EQ(imageAfter(recordOf(2), hexBytes("0000"), "258"), hexBytes("0102"));
    EXPECT_EQ(imageAfter(recordOf(4), hexBytes("0000"), "-2"), hexBytes("fffe"));
    EXPECT_EQ(imageAfter(recordOf(6), hexBytes("00000000"), "16909060"), hexBytes("01020304"));
    EXPECT_EQ(imageAfter(recordOf(7), hexBytes("00000000"), "-16909060"), hexBytes("fefdfcfc"));
    EXPECT_EQ(imageAfter(recordOf(8), Bytes(8, 0), "72623859790382856"),
              hexBytes("0102030405060708"));
    EXPECT_EQ(imageAfter(recordOf(9), Bytes(8, 0), "-1"), Bytes(8, 0xFF));
}

TEST_F(SetParameterTest, neighboursStay)
{
    const Bytes image = hexBytes("a1a2a3a4a5a6a7a8a9aa");
    EXPECT_EQ(imageAfter(recordOf(1, 5), image, "0"), hexBytes("a100a3a4a5a6a7a8a9aa"));
    EXPECT_EQ(imageAfter(recordOf(4, 6), image, "-1"), hexBytes("a1a2ffffa5a6a7a8a9aa"));
    EXPECT_EQ(imageAfter(recordOf(7, 7), image, "1"), hexBytes("a1a2a300000001a8a9aa"));
    EXPECT_EQ(imageAfter(recordOf(8, 5), image, "0"), hexBytes("a10000000000000000aa"));
}

TEST_F(SetParameterTest, placeMayEndWithTheImage)
{
    EXPECT_EQ(imageAfter(recordOf(2, 5), hexBytes("a10000"), "513"), hexBytes("a10201"));
    Bytes image(256, 0xA5);
    Bytes expected = image;
    expected[255] = 9;
    EXPECT_EQ(imageAfter(recordOf(1, 3), image, "9"), expected); // byte offset 255
}

TEST_F(SetParameterTest, signIsOptional)
{
    EXPECT_EQ(imageAfter(recordOf(3), {9}, "+5"), (Bytes{5}));
    EXPECT_EQ(imageAfter(recordOf(3), {9}, "-5"), (Bytes{0xFB}));
    EXPECT_EQ(imageAfter(recordOf(1), {9}, "-0"), (Bytes{0}));
    EXPECT_EQ(imageAfter(recordOf(1), {9}, "+0"), (Bytes{0}));
}

TEST_F(SetParameterTest, leadingZerosAreDecimal)
{
    EXPECT_EQ(imageAfter(recordOf(1), {9}, "0010"), (Bytes{10}));
    EXPECT_EQ(imageAfter(recordOf(1), {9}, std::string(100, '0') + "8"), (Bytes{8}));
}

TEST_F(SetParameterTest, statedRangeIsNotEnforced)
{
    ParameterRecord record = recordOf(1);
    record.minimum = 10;
    record.maximum = 20;
    EXPECT_EQ(imageAfter(record, {15}, "9"), (Bytes{9}));
    EXPECT_EQ(imageAfter(record, {15}, "255"), (Bytes{255}));
}

TEST_F(SetParameterTest, optionListIsNotEnforced)
{
    give(0, 0x20C1, testkit::optionList(3, {{1, 100}, {2, 101}}));
    ParameterRecord record = recordOf(1);
    record.mapId = 3;
    EXPECT_EQ(imageAfter(record, {1}, "77"), (Bytes{77}));
}

TEST_F(SetParameterTest, otherFlagsDoNotConvert)
{
    giveConversions({{1, plusHalf}});
    ParameterRecord record = recordOf(1);
    record.conversionId = 1;
    record.showMe = 0xFB; // all but bit 2
    EXPECT_EQ(imageAfter(record, {0}, "5"), (Bytes{5}));
    record.showMe = 0x04;
    EXPECT_EQ(imageAfter(record, {0}, "5"), (Bytes{10}));
}

} // namespace
