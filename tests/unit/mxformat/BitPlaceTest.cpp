#include <mxformat/BitPlace.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

using mxformat::bitPlace;

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
}

TEST(BitPlaceTest, fieldOutsideItsByteHasNoPlace)
{
    EXPECT_EQ(bitPlace(4, 4).mask(), 0xF0);
    EXPECT_TRUE(bitPlace(4, 4).exists());
    for (const auto& [length, offset] :
         {std::pair(5U, 4U), std::pair(8U, 4U), std::pair(1U, 8U), std::pair(0U, 8U),
          std::pair(1U, 255U), std::pair(255U, 0U)}) {
        EXPECT_FALSE(bitPlace(length, offset).exists());
        EXPECT_EQ(bitPlace(length, offset).mask(), 0x00);
    }
}

} // namespace
