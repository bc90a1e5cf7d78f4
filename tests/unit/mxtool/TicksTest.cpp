#include "station/Ticks.h"

#include <gtest/gtest.h>

namespace {

using mxtool::Ticks;
using std::chrono::milliseconds;

constexpr Ticks::Time begin{};

Ticks::Time at(int time)
{
    return begin + milliseconds(time);
}

// What was done took 3, 0 and 9 ms of each 10.
TEST(Ticks, CountFromTheBeginningHoweverLongThingsTake)
{
    Ticks ticks(begin, milliseconds(10));
    EXPECT_EQ(ticks.next(at(3)), at(10));
    EXPECT_EQ(ticks.next(at(10)), at(20));
    EXPECT_EQ(ticks.next(at(29)), at(30));
    EXPECT_EQ(ticks.skipped(), 0U);
}

TEST(Ticks, LeaveOutWhatIsOver)
{
    Ticks ticks(begin, milliseconds(10));
    EXPECT_EQ(ticks.next(at(35)), at(40)); // without 10, 20 and 30
    EXPECT_EQ(ticks.skipped(), 3U);
    EXPECT_EQ(ticks.next(at(41)), at(50));
    EXPECT_EQ(ticks.skipped(), 3U);
}

} // namespace
