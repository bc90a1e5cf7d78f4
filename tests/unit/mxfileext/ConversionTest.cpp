#include "CompanionTest.h"

#include <limits>

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::join;
using testkit::ParameterRecord;

using ConversionTest = CompanionTest;

ParameterRecord converted(std::uint8_t datatype, std::uint8_t conversionId)
{
    ParameterRecord record;
    record.datatype = datatype;
    record.showMe = 4;
    record.conversionId = conversionId;
    return record;
}

void expectNumbers(const Converted& result, float value, float min, float max)
{
    EXPECT_EQ(result.value, value);
    EXPECT_EQ(result.min, min);
    EXPECT_EQ(result.max, max);
}

TEST_F(ConversionTest, isRawTimesFactorPlusOffset)
{
    giveTexts(testkit::textTablePayload({{7, "mA"}}));
    giveConversions({{1, plusHalf, plusTen, 7}});
    ParameterRecord record = converted(4, 1);
    record.minimum = 0xFF9C; // -100
    record.maximum = 200;
    const Converted result = convert(record, hexBytes("0064"));
    expectNumbers(result, 60.0F, -40.0F, 110.0F);
    EXPECT_EQ(result.unit, "mA");
}

TEST_F(ConversionTest, negativeFactorSwapsTheBounds)
{
    giveConversions({{1, minusHalf, plusTen}});
    expectNumbers(convert(converted(1, 1), {4}), 8.0F, -117.5F, 10.0F);
}

TEST_F(ConversionTest, doesNotAskForTheConvertedFlag)
{
    giveConversions({{1, plusHalf}});
    ParameterRecord record = converted(1, 1);
    record.showMe = 0;
    expectNumbers(convert(record, {4}), 2.0F, 0.0F, 127.5F);
}

TEST_F(ConversionTest, identifierZeroIsNone)
{
    giveTexts(testkit::textTablePayload({{7, "V"}}));
    giveConversions({{0, plusHalf, plusTen, 7}});
    const Converted result = convert(converted(1, 0), {4});
    expectNumbers(result, 4.0F, 0.0F, 255.0F);
    EXPECT_EQ(result.unit, "");
}

TEST_F(ConversionTest, unknownIdentifierAndMissingTableChangeNothing)
{
    expectNumbers(convert(converted(1, 1), {4}), 4.0F, 0.0F, 255.0F);
    giveConversions({{1, plusHalf}});
    const Converted result = convert(converted(1, 2), {4});
    expectNumbers(result, 4.0F, 0.0F, 255.0F);
    EXPECT_EQ(result.unit, "");
}

TEST_F(ConversionTest, unusableFactorOrOffsetChangesNothing)
{
    giveTexts(testkit::textTablePayload({{7, "V"}}));
    giveConversions({{1, 0x00000000, plusTen, 7},    // factor 0
                     {2, 0x80000000, plusTen, 7},    // -0
                     {3, 0x7F800000, plusTen, 7},    // infinity
                     {4, 0xFF800000, plusTen, 7},    // -infinity
                     {5, 0x7FC00000, plusTen, 7},    // not a number
                     {6, plusHalf, 0x7F800000, 7},   // offset infinity
                     {7, plusHalf, 0xFFC00000, 7}}); // offset not a number
    for (std::uint8_t id = 1; id <= 7; ++id) {
        const Converted result = convert(converted(1, id), {4});
        expectNumbers(result, 4.0F, 0.0F, 255.0F);
        EXPECT_EQ(result.unit, "") << int{id};
    }
}

TEST_F(ConversionTest, firstEntryOfAnIdentifierHolds)
{
    giveConversions({{1, plusHalf}, {1, plusTen}, {2, 0}, {2, plusTen}});
    EXPECT_EQ(convert(converted(1, 1), {4}).value, 2.0F);
    EXPECT_EQ(convert(converted(1, 2), {4}).value, 4.0F); // the unusable entry is the first
}

TEST_F(ConversionTest, tableOfEveryLengthMustFitItsEntries)
{
    const Bytes table =
        join({ConversionEntry{1, plusHalf}.bytes(), ConversionEntry{2, plusTen}.bytes()});
    ASSERT_EQ(table.size(), 22U);
    for (std::size_t size = 0; size <= table.size(); ++size) {
        forgetAll();
        give(0, 0x20C2, Bytes(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(size)));
        const bool hasFirst = size == 11 || size == 22;
        EXPECT_EQ(convert(converted(1, 1), {4}).value, hasFirst ? 2.0F : 4.0F) << size;
        EXPECT_EQ(convert(converted(1, 2), {4}).value, size == 22 ? 40.0F : 4.0F) << size;
    }
    forgetAll();
    give(0, 0x20C2, join({table, {0}}));
    EXPECT_EQ(convert(converted(1, 1), {4}).value, 4.0F);
}

TEST_F(ConversionTest, isComputedBeyondThePrecisionOfTheResult)
{
    giveConversions({{1, plusOne, 0xCB800000}}); // offset -16777216
    // 16777217 is not a binary32: rounded before the offset is added, the result would be 0.
    EXPECT_EQ(convert(converted(6, 1), hexBytes("01000001")).value, 1.0F);
}

TEST_F(ConversionTest, sixtyFourBitsKeepTheirSign)
{
    expectNumbers(convert(converted(8, 0), Bytes(8, 0xFF)), 18446744073709551616.0F, 0.0F,
                  18446744073709551616.0F);
    expectNumbers(convert(converted(9, 0), hexBytes("8000000000000000")), -9223372036854775808.0F,
                  -9223372036854775808.0F, 9223372036854775808.0F);
    EXPECT_EQ(convert(converted(9, 0), Bytes(8, 0xFF)).value, -1.0F);
}

TEST_F(ConversionTest, resultBeyondTheLargestNumberIsInfinite)
{
    giveConversions({{1, 0x7F7FFFFF}}); // the largest finite factor
    constexpr float infinity = std::numeric_limits<float>::infinity();
    expectNumbers(convert(converted(3, 1), {0xFE}), -infinity, -infinity, infinity);
}

TEST_F(ConversionTest, absentValueCountsAsZero)
{
    giveConversions({{1, plusHalf, plusTen}});
    expectNumbers(convert(converted(2, 1), {0xFF}), 10.0F, 10.0F, 32777.5F);

    Bytes record = converted(1, 1).bytes();
    Converted result;
    tellSize(4);
    mxfileext::getConvertedParameter(0, nullptr, record.data(), &result.value, &result.min,
                                     &result.max, result.unit);
    expectNumbers(result, 10.0F, 10.0F, 137.5F);
}

TEST_F(ConversionTest, invalidDatatypeIsAbsent)
{
    giveConversions({{1, plusHalf, plusTen}});
    for (const unsigned datatype : {0U, 10U, 255U}) {
        expectNumbers(convert(converted(static_cast<std::uint8_t>(datatype), 1), Bytes(16, 0x55)),
                      10.0F, 10.0F, 10.0F);
    }
}

} // namespace
