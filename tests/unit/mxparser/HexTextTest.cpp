#include "devices/parser/mx/HexText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using namespace devices::parser::mx;

TEST(HexText, U8HasTwoDigits)
{
    EXPECT_EQ(u8AsHex(255), "ff");
    EXPECT_EQ(u8AsHex(15), "0f");
    EXPECT_EQ(u8AsHex(0), "00");
}

TEST(HexText, U16HasFourDigits)
{
    EXPECT_EQ(u16AsHex(17), "0011");
    EXPECT_EQ(u16AsHex(0x20D3), "20d3");
    EXPECT_EQ(u16AsHex(65535), "ffff");
}

TEST(HexText, U32HasEightDigits)
{
    EXPECT_EQ(u32AsHex(0), "00000000");
    EXPECT_EQ(u32AsHex(0xABCD), "0000abcd");
    EXPECT_EQ(u32AsHex(0xFEDCBA98), "fedcba98");
}

TEST(HexText, EachCallGivesANewText)
{
    const std::string& first = u16AsHex(1);
    const std::string& second = u16AsHex(2);
    EXPECT_EQ(first, "0001");
    EXPECT_EQ(second, "0002");
}

TEST(BufferAsHex, OneByteHasNoBlank)
{
    const std::uint8_t byte = 0x0A;
    EXPECT_EQ(bufferAsHex(&byte, 1), "0a");
}

TEST(BufferAsHex, NoBytesGiveTheEmptyText)
{
    EXPECT_EQ(bufferAsHex(nullptr, 0), "");
    EXPECT_EQ(bufferAsHex(std::vector<char>{}), "");
}

TEST(BufferAsHex, BytesAreSeparatedByOneBlank)
{
    const std::vector<std::uint8_t> bytes{0x0A, 0x1B, 0xFF};
    EXPECT_EQ(bufferAsHex(bytes.data(), 3), "0a 1b ff");
    EXPECT_EQ(bufferAsHex(bytes.data(), 2), "0a 1b");
}

TEST(BufferAsHex, OfAByteBufferTakesBytesAsUnsigned)
{
    EXPECT_EQ(bufferAsHex(std::vector<char>{'\x80', '\0', 'A'}), "80 00 41");
}

TEST(FixedWidth, ShortTextIsPaddedOnTheRight)
{
    EXPECT_EQ(toFixedWidth("ab", 5), "ab   ");
    EXPECT_EQ(toFixedWidth("", 2), "  ");
}

TEST(FixedWidth, LongTextIsNeverCut)
{
    EXPECT_EQ(toFixedWidth("abcdef", 3), "abcdef");
    EXPECT_EQ(toFixedWidth("abc", 3), "abc");
}

TEST(FixedWidth, WidthOfZeroOrLessChangesNothing)
{
    EXPECT_EQ(toFixedWidth("ab", 0), "ab");
    EXPECT_EQ(toFixedWidth("ab", -5), "ab");
    EXPECT_EQ(toFixedWidth("", -1), "");
}

TEST(FixedWidth, CountsBytesOfAnyValue)
{
    EXPECT_EQ(toFixedWidth(std::string("\0\xFC", 2), 3), std::string("\0\xFC ", 3));
}

} // namespace
