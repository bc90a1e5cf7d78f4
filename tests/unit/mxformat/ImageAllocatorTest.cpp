#include <mxformat/ImageAllocator.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using mxformat::ImageAllocator;

constexpr std::uint8_t byteKind = 1;
constexpr std::uint8_t wordKind = 2;
constexpr std::uint8_t bitKind = 5;
constexpr std::uint8_t doubleKind = 6;
constexpr std::uint8_t longKind = 9;

std::string symbolOf(ImageAllocator& image, std::uint8_t kind, std::uint8_t bits = 0,
                     std::uint8_t offset = 0)
{
    const auto place = image.take(kind, bits);
    return place ? place->symbol(true, bits, offset) : "none";
}

TEST(ImageAllocatorTest, packsBitsIntoBytes)
{
    ImageAllocator image;
    for (std::uint8_t i = 0; i < 8; ++i) {
        EXPECT_EQ(symbolOf(image, bitKind, 1, i), "IX0_" + std::to_string(i));
    }
    EXPECT_EQ(symbolOf(image, bitKind, 1, 8), "IX1_8");
    EXPECT_EQ(image.byte(), 1U);
    EXPECT_EQ(image.bit(), 1U);
}

TEST(ImageAllocatorTest, longFieldTakesOneByteMore)
{
    ImageAllocator image;
    EXPECT_EQ(symbolOf(image, bitKind, 20, 2), "IB0#2,1048575");
    EXPECT_EQ(image.byte(), 1U);
    EXPECT_EQ(image.bit(), 4U);
    EXPECT_EQ(symbolOf(image, bitKind, 0, 3), "IB1#3,0");
    EXPECT_EQ(symbolOf(image, bitKind, 32, 0), "IB1#0,4294967295");
}

TEST(ImageAllocatorTest, wholeBytesCloseAnOpenByte)
{
    const auto afterOneBit = [](std::uint32_t byte, std::uint8_t kind) {
        ImageAllocator image(byte, 1);
        return symbolOf(image, kind);
    };
    EXPECT_EQ(afterOneBit(0, byteKind), "IB1");
    EXPECT_EQ(afterOneBit(0, wordKind), "IW2");
    EXPECT_EQ(afterOneBit(1, wordKind), "IW2");
    EXPECT_EQ(afterOneBit(0, doubleKind), "ID2");
    EXPECT_EQ(afterOneBit(4, doubleKind), "ID6");
    EXPECT_EQ(afterOneBit(2, longKind), "IL6");
}

TEST(ImageAllocatorTest, withoutAnOpenByteNothingIsAligned)
{
    ImageAllocator image(1);
    EXPECT_EQ(symbolOf(image, longKind), "IL1");
    EXPECT_EQ(symbolOf(image, wordKind), "IW9");
    EXPECT_EQ(image.byte(), 11U);
}

TEST(ImageAllocatorTest, kindWithoutDataTakesNothing)
{
    for (const std::uint8_t kind : std::vector<std::uint8_t>{0, 10, 30, 31}) {
        ImageAllocator image(3, 2);
        EXPECT_EQ(symbolOf(image, kind, 1), "none");
        EXPECT_EQ(image.byte(), 3U);
        EXPECT_EQ(image.bit(), 2U);
    }
}

TEST(ImageAllocatorTest, aSizeLetterStandsForItsBytes)
{
    EXPECT_EQ(mxformat::bytesOfSizeLetter('B'), 1);
    EXPECT_EQ(mxformat::bytesOfSizeLetter('W'), 2);
    EXPECT_EQ(mxformat::bytesOfSizeLetter('D'), 4);
    EXPECT_EQ(mxformat::bytesOfSizeLetter('L'), 8);
    EXPECT_EQ(mxformat::bytesOfSizeLetter('X'), 0);
}

TEST(ImageAllocatorTest, outputsBeginWithQ)
{
    EXPECT_EQ(ImageAllocator(7).take(bitKind, 1)->symbol(false, 1, 5), "QX7_5");
}

} // namespace
