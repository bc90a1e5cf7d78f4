#include "CompanionTest.h"

#include <utility>

namespace {

using testkit::Bytes;
using testkit::ParameterRecord;

using BitFieldTest = CompanionTest;

ParameterRecord bitField(std::uint8_t bitLength, std::uint8_t bitOffset)
{
    ParameterRecord record;
    record.number = 7;
    record.datatype = 5;
    record.bitLength = bitLength;
    record.bitOffset = bitOffset;
    return record;
}

// 0xB4 = 1011 0100
TEST_F(BitFieldTest, valueIsShiftedDown)
{
    EXPECT_EQ(read(bitField(1, 2), {0xB4}), (Texts{"1", "0", "1"}));
    EXPECT_EQ(read(bitField(1, 3), {0xB4}), (Texts{"0", "0", "1"}));
    EXPECT_EQ(read(bitField(3, 2), {0xB4}), (Texts{"5", "0", "7"}));
    EXPECT_EQ(read(bitField(4, 4), {0xB4}), (Texts{"11", "0", "15"}));
    EXPECT_EQ(read(bitField(8, 0), {0xB4}), (Texts{"180", "0", "255"}));
}

TEST_F(BitFieldTest, lengthZeroIsTheRestOfTheByte)
{
    EXPECT_EQ(read(bitField(0, 0), {0xB4}), (Texts{"180", "0", "255"}));
    EXPECT_EQ(read(bitField(0, 4), {0xB4}), (Texts{"11", "0", "15"}));
    EXPECT_EQ(read(bitField(0, 7), {0xB4}), (Texts{"1", "0", "1"}));
}

// Writing only some of its bits would set a value other than the requested one.
TEST_F(BitFieldTest, fieldThatLeavesItsByteHasNoValue)
{
    for (const auto& [bitLength, bitOffset] :
         {std::pair(6U, 5U), std::pair(9U, 0U), std::pair(255U, 0U), std::pair(1U, 8U),
          std::pair(0U, 8U), std::pair(1U, 63U), std::pair(1U, 64U), std::pair(1U, 255U)}) {
        ParameterRecord record =
            bitField(static_cast<std::uint8_t>(bitLength), static_cast<std::uint8_t>(bitOffset));
        EXPECT_EQ(read(record, {0xFF, 0xFF}), (Texts{"", "0", "0"}));
        record.maximum = 9;
        EXPECT_EQ(read(record, {0xFF, 0xFF}), (Texts{"", "0", "9"}));
        EXPECT_EQ(failureToSet(record, {0xFF, 0xFF}, "0"),
                  "Parameter 7: cannot set value \"0\": its bit field of " +
                      std::to_string(bitLength) + " bit(s) at bit offset " +
                      std::to_string(bitOffset) + " lies outside its byte, expected bits 0 to 7");
    }
}

TEST_F(BitFieldTest, statedRangeIsNotCutToTheField)
{
    ParameterRecord record = bitField(3, 0);
    record.minimum = 8;
    record.maximum = 255;
    EXPECT_EQ(read(record, {0xFF}), (Texts{"7", "8", "255"}));
}

TEST_F(BitFieldTest, otherDatatypesHaveNone)
{
    ParameterRecord record = bitField(3, 4);
    record.datatype = 1;
    EXPECT_EQ(read(record, {0xB4}), (Texts{"180", "0", "255"}));
    EXPECT_EQ(imageAfter(record, {0xB4}, "1"), (Bytes{0x01}));
}

// Every field of every offset and length: its own bits change, the others stay.
TEST_F(BitFieldTest, neighboursStay)
{
    for (unsigned bitOffset = 0; bitOffset < 8; ++bitOffset) {
        for (unsigned bitLength = 1; bitOffset + bitLength <= 8; ++bitLength) {
            const auto record = bitField(static_cast<std::uint8_t>(bitLength),
                                         static_cast<std::uint8_t>(bitOffset));
            const unsigned highest = (1U << bitLength) - 1;
            const auto mask = static_cast<std::uint8_t>(highest << bitOffset);
            const auto others = static_cast<std::uint8_t>(~mask);
            EXPECT_EQ(imageAfter(record, {0x00, 0x00}, std::to_string(highest)),
                      (Bytes{mask, 0x00}));
            EXPECT_EQ(imageAfter(record, {0xFF, 0xFF}, "0"), (Bytes{others, 0xFF}));
            EXPECT_EQ(failureToSet(record, {0xA5, 0xA5}, std::to_string(highest + 1)),
                      "Parameter 7: cannot set value \"" + std::to_string(highest + 1) +
                          "\": expected 0 to " + std::to_string(highest));
        }
    }
}

TEST_F(BitFieldTest, isConvertedLikeAnyOtherValue)
{
    giveConversions({{1, plusHalf, plusTen}});
    ParameterRecord record = bitField(3, 2);
    record.showMe = 4;
    record.conversionId = 1;
    const Converted converted = convert(record, {0xB4}); // raw 5 of 0 to 7
    EXPECT_EQ(converted.value, 12.5F);
    EXPECT_EQ(converted.min, 10.0F);
    EXPECT_EQ(converted.max, 13.5F);
    EXPECT_EQ(imageAfter(record, {0xB4}, "13"), (Bytes{0xB8})); // raw 6: 101[110]00
}

} // namespace
