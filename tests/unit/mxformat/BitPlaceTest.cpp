#include <mxformat/BitPlace.h>

#include <gtest/gtest.h>

namespace {

using mxformat::bitPlace;
using mxformat::leavesItsByte;

TEST(BitPlaceTest, goesFromItsOffsetUp)
{
    EXPECT_EQ(bitPlace(3, 4).mask(), 0x70);
    EXPECT_EQ(bitPlace(8, 0).mask(), 0xFF);
    EXPECT_EQ(bitPlace(1, 7).mask(), 0x80);
    EXPECT_EQ(bitPlace(3, 4).shift, 4U);
}

TEST(BitPlaceTest, lengthZeroIsTheRestOfTheByte)
{
    EXPECT_EQ(bitPlace(0, 0).mask(), 0xFF);
    EXPECT_EQ(bitPlace(0, 5).mask(), 0xE0);
    EXPECT_FALSE(leavesItsByte(0, 5));
}

TEST(BitPlaceTest, endsWithItsByte)
{
    EXPECT_EQ(bitPlace(8, 4).mask(), 0xF0);
    EXPECT_EQ(bitPlace(1, 8).mask(), 0x00);
    EXPECT_FALSE(leavesItsByte(4, 4));
    EXPECT_TRUE(leavesItsByte(5, 4));
    EXPECT_TRUE(leavesItsByte(8, 4));
    EXPECT_TRUE(leavesItsByte(0, 8));
    EXPECT_TRUE(leavesItsByte(1, 255));
}

} // namespace
