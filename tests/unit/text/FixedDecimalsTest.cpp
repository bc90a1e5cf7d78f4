#include <text/FixedDecimals.h>

#include <gmock/gmock.h>

#include <limits>

namespace {

using text::fixedDecimals;

TEST(FixedDecimals, areSix)
{
    EXPECT_EQ(fixedDecimals(0), "0.000000");
    EXPECT_EQ(fixedDecimals(-0.0F), "-0.000000");
    EXPECT_EQ(fixedDecimals(1.5F), "1.500000");
    EXPECT_EQ(fixedDecimals(0.1F), "0.100000"); // 0.100000001490116...
    EXPECT_EQ(fixedDecimals(-2.5e-7F), "-0.000000");
}

TEST(FixedDecimals, holdEveryNumber)
{
    using Limits = std::numeric_limits<float>;
    // -(2 to the 128 - 2 to the 104)
    EXPECT_EQ(fixedDecimals(Limits::lowest()), "-340282346638528859811704183484516925440.000000");
    EXPECT_EQ(fixedDecimals(-Limits::infinity()), "-inf");
    EXPECT_EQ(fixedDecimals(Limits::quiet_NaN()), "nan");
}

} // namespace
