#include "Progress.h"

#include <gmock/gmock.h>

namespace {

using mxtool::Progress;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

// A terminal that keeps what is written to it, and a clock that is set.
class ProgressLine : public testing::Test
{
protected:
    std::chrono::steady_clock::time_point time;
    std::vector<std::string> written;
    std::function<void(const std::string&)> terminal = [this](const std::string& text) {
        written.push_back(text);
    };
    Progress::Clock clock = [this] { return time; };
};

TEST_F(ProgressLine, isSilentForWorkOfASecond)
{
    Progress progress("files", 1000, terminal, clock);
    for (int step = 0; step < 10; ++step) {
        time += milliseconds(99);
        progress.show(100);
    }
    EXPECT_THAT(written, IsEmpty());
}

TEST_F(ProgressLine, tellsDoneRateAndTimeLeft)
{
    {
        Progress progress("files", 1000, terminal, clock);
        time += milliseconds(2000);
        progress.show(250);
    }
    // 250 in 2 s are 125 per second; 750 are left.
    EXPECT_THAT(written, ElementsAre("\r\033[K250/1000 files, 125/s, 6 s left", "\r\033[K"));
}

TEST_F(ProgressLine, isWrittenTenTimesASecondAtMost)
{
    Progress progress("modules", 1000, terminal, clock);
    time += milliseconds(1000);
    progress.show(1);
    for (unsigned step = 2; step < 100; ++step) {
        time += milliseconds(10);
        progress.show(step);
    }
    EXPECT_EQ(written.size(), 10U);
}

TEST_F(ProgressLine, knowsNoTimeLeftBeforeTheFirstIsDone)
{
    Progress progress("files", 1000, terminal, clock);
    time += milliseconds(1500);
    progress.show(0);
    EXPECT_THAT(written, ElementsAre("\r\033[K0/1000 files, 0/s"));
}

TEST_F(ProgressLine, saysNothingWithoutATerminal)
{
    Progress progress("files", 1000, {}, clock);
    time += milliseconds(5000);
    progress.show(500);
    EXPECT_THAT(written, IsEmpty());
}

} // namespace
