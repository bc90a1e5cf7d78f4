#include <gmock/gmock.h>
#include <text/WholeNumber.h>

#include <cstdint>

namespace {

using testing::Eq;
using testing::Optional;
using text::wholeNumber;

TEST(WholeNumber, IsTheWholeText)
{
    EXPECT_THAT(wholeNumber<std::uint16_t>("65535"), Optional(65535));
    EXPECT_THAT(wholeNumber<std::uint16_t>("0"), Optional(0));
    EXPECT_THAT(wholeNumber<std::int64_t>("-5"), Optional(-5));
    for (const char* text : {"", " 5", "5 ", "5x", "+5", "x", "0x5", "5.0", "-"}) {
        EXPECT_THAT(wholeNumber<std::int64_t>(text), Eq(std::nullopt)) << text;
    }
}

TEST(WholeNumber, FitsItsType)
{
    EXPECT_THAT(wholeNumber<std::uint16_t>("65536"), Eq(std::nullopt));
    EXPECT_THAT(wholeNumber<std::uint8_t>("256"), Eq(std::nullopt));
    EXPECT_THAT(wholeNumber<std::uint8_t>("-1"), Eq(std::nullopt));
}

TEST(WholeNumber, MayBeHexadecimal)
{
    EXPECT_THAT(wholeNumber<std::uint32_t>("5A030304", 16), Optional(0x5A030304U));
    EXPECT_THAT(wholeNumber<std::uint32_t>("5g", 16), Eq(std::nullopt));
}

} // namespace
