#include <mxmodule/Finding.h>
#include <mxonline/TimeText.h>

#include <gtest/gtest.h>

namespace mxonline {

namespace {

using std::chrono::milliseconds;

TEST(TimeText, HasAUnit)
{
    EXPECT_EQ(timeOf("10ms"), milliseconds(10));
    EXPECT_EQ(timeOf("2s"), milliseconds(2000));
    EXPECT_EQ(timeOf("5m"), milliseconds(300000));
    EXPECT_EQ(timeOf("24h"), milliseconds(86400000));
    EXPECT_EQ(timeOf("0s"), milliseconds(0));
}

TEST(TimeText, RejectsAnythingElse)
{
    for (const char* const text : {"", "1", "s", "-1s", "-0s", "1.5s", "1 s", "1s ", "25h", "1S",
                                   "1d", "86400001ms", "99999999999999999999s"}) {
        EXPECT_THROW(static_cast<void>(timeOf(text)), mxmodule::Failure) << text;
    }
    try {
        static_cast<void>(timeOf("soon"));
        FAIL() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Request);
        EXPECT_EQ(failure.reason().text, "found the time \"soon\", expected a whole number and ms, "
                                         "s, m or h, at most 24h");
    }
}

TEST(TimeText, IsShownInTheLargestUnitWithoutARest)
{
    EXPECT_EQ(timeText(milliseconds(1500)), "1500ms");
    EXPECT_EQ(timeText(milliseconds(90000)), "90s");
    EXPECT_EQ(timeText(milliseconds(7200000)), "2h");
    EXPECT_EQ(timeText(milliseconds(0)), "0s");
}

} // namespace

} // namespace mxonline
