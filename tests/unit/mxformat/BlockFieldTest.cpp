#include <mxformat/BlockField.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using mxformat::BlockField;
using mxformat::WholeNumber;

// Of a value at the byte `byte` of the block.
BlockField fieldAt(std::uint8_t byte, std::uint8_t datatype, std::uint8_t bitLength = 0,
                   std::uint8_t bitOffset = 0)
{
    return {mxformat::statedPosition(byte), datatype, bitLength, bitOffset};
}

std::uint64_t negative(std::uint64_t magnitude)
{
    return 0 - magnitude;
}

TEST(BlockFieldTest, countsPositionsFromFourInEightBits)
{
    EXPECT_EQ(BlockField(4, 1, 0, 0).begin(), 0U);
    EXPECT_EQ(BlockField(3, 1, 0, 0).begin(), 255U);
    EXPECT_EQ(mxformat::statedPosition(0), 4);
    EXPECT_EQ(mxformat::statedPosition(252), 0);
}

TEST(BlockFieldTest, readsWholeBytesBigEndianAndSignExtended)
{
    const std::vector<std::uint8_t> block = {0xFF, 0xFE, 0x01, 0x02, 0x80, 0, 0, 0, 0};
    EXPECT_EQ(fieldAt(0, 2).read(block.data()), 0xFFFEU);
    EXPECT_EQ(fieldAt(0, 4).read(block.data()), negative(2));
    EXPECT_EQ(fieldAt(1, 3).read(block.data()), negative(2));
    EXPECT_EQ(fieldAt(0, 6).read(block.data()), 0xFFFE0102U);
    EXPECT_EQ(fieldAt(1, 8).read(block.data()), 0xFE01028000000000U);
}

TEST(BlockFieldTest, writesItsBitsAlone)
{
    std::vector<std::uint8_t> block = {0xFF, 0xFF, 0xFF};
    fieldAt(1, 5, 3, 2).write(block.data(), 0x12); // 0b010 of it
    EXPECT_EQ(block, (std::vector<std::uint8_t>{0xFF, 0xEB, 0xFF}));
    fieldAt(0, 4).write(block.data(), negative(2));
    EXPECT_EQ(block, (std::vector<std::uint8_t>{0xFF, 0xFE, 0xFF}));
}

TEST(BlockFieldTest, lengthZeroReachesToBitSeven)
{
    const BlockField field = fieldAt(0, 5, 0, 5);
    const std::uint8_t byte = 0xBF;
    EXPECT_EQ(field.bits(), 3U);
    EXPECT_EQ(field.read(&byte), 5U);
    EXPECT_EQ(field.highest(), 7U);
}

TEST(BlockFieldTest, fieldOutsideItsByteDoesNotExist)
{
    for (const BlockField& field :
         {fieldAt(0, 5, 3, 6), fieldAt(0, 5, 0, 8), fieldAt(0, 5, 9, 0)}) {
        EXPECT_FALSE(field.exists());
        EXPECT_FALSE(field.liesWithin(256));
        EXPECT_FALSE(field.holds(WholeNumber(false, 0)));
        EXPECT_FALSE(field.overlaps(fieldAt(0, 1)));
    }
}

TEST(BlockFieldTest, invalidDatatypeHasNoField)
{
    for (const std::uint8_t datatype : std::vector<std::uint8_t>{0, 10, 255}) {
        const BlockField field = fieldAt(0, datatype);
        EXPECT_EQ(field.datatype(), nullptr);
        EXPECT_EQ(field.size(), 0U);
        EXPECT_FALSE(field.liesWithin(256));
    }
}

TEST(BlockFieldTest, bitsCountForBitFieldsAlone)
{
    EXPECT_EQ(fieldAt(0, 2, 3, 5).bits(), 16U);
    EXPECT_EQ(fieldAt(0, 2, 3, 5).firstBit(), 0U);
}

TEST(BlockFieldTest, holdsTheNumbersOfItsBits)
{
    EXPECT_EQ(fieldAt(0, 4).lowest(), negative(0x8000));
    EXPECT_EQ(fieldAt(0, 4).highest(), 0x7FFFU);
    EXPECT_EQ(fieldAt(0, 9).lowest(), negative(std::uint64_t{1} << 63));
    EXPECT_EQ(fieldAt(0, 8).highest(), ~std::uint64_t{0});
    EXPECT_TRUE(fieldAt(0, 3).holds(WholeNumber(true, 128)));
    EXPECT_FALSE(fieldAt(0, 3).holds(WholeNumber(true, 129)));
    EXPECT_TRUE(fieldAt(0, 5, 3, 2).holds(WholeNumber(false, 7)));
    EXPECT_FALSE(fieldAt(0, 5, 3, 2).holds(WholeNumber(false, 8)));
}

TEST(BlockFieldTest, endsWithItsBlock)
{
    EXPECT_TRUE(fieldAt(2, 2).liesWithin(4));
    EXPECT_FALSE(fieldAt(2, 2).liesWithin(3));
    EXPECT_FALSE(fieldAt(255, 2).liesWithin(256));
}

TEST(BlockFieldTest, overlapsWhereABitIsShared)
{
    EXPECT_TRUE(fieldAt(0, 6).overlaps(fieldAt(3, 1)));
    EXPECT_FALSE(fieldAt(0, 6).overlaps(fieldAt(4, 1)));
    EXPECT_TRUE(fieldAt(0, 2).overlaps(fieldAt(1, 5, 1, 7)));
    EXPECT_FALSE(fieldAt(1, 5, 3, 0).overlaps(fieldAt(1, 5, 5, 3)));
    EXPECT_TRUE(fieldAt(1, 5, 4, 0).overlaps(fieldAt(1, 5, 5, 3)));
}

TEST(BlockFieldTest, slotHasTheNumberInItsLastBytes)
{
    EXPECT_EQ(fieldAt(0, 3).fromSlot(0x1122334455667780), negative(128));
    EXPECT_EQ(fieldAt(0, 2).fromSlot(0x1122334455667780), 0x7780U);
    EXPECT_EQ(fieldAt(0, 5, 1, 0).fromSlot(0x80), 0x80U);
}

TEST(BlockFieldTest, statedRangeGoesBeforeTheNaturalOne)
{
    mxformat::ParameterRecord record;
    record.position = 4;
    record.datatype = 3;
    EXPECT_EQ(rangeOf(record, BlockField(record)).lowest, negative(128));
    EXPECT_EQ(rangeOf(record, BlockField(record)).highest, 127U);
    record.minimum = 0xF0; // -16
    EXPECT_EQ(rangeOf(record, BlockField(record)).lowest, negative(16));
    EXPECT_EQ(rangeOf(record, BlockField(record)).highest, 0U);
}

} // namespace
