#include "Interruption.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

namespace {

using mxtool::Interruption;

TEST(Interruption, IsRememberedOnce)
{
    const Interruption first;
    EXPECT_FALSE(Interruption::isRequested());
    std::raise(SIGTERM);
    EXPECT_TRUE(Interruption::isRequested());
    const Interruption second;
    EXPECT_FALSE(Interruption::isRequested());
}

TEST(Interruption, EndsTheProcessTheSecondTime)
{
    EXPECT_EXIT(
        {
            const Interruption interruption;
            std::raise(SIGINT);
            std::raise(SIGINT);
        },
        testing::KilledBySignal(SIGINT), "");
}

TEST(Interruption, EndsAWait)
{
    using std::chrono::steady_clock;
    const Interruption interruption;
    const auto soon = steady_clock::now() + std::chrono::milliseconds(5);
    EXPECT_FALSE(Interruption::isRequestedUntil(soon));
    EXPECT_GE(steady_clock::now(), soon);
    std::raise(SIGHUP);
    EXPECT_TRUE(Interruption::isRequestedUntil(soon + std::chrono::hours(1)));
}

TEST(Interruption, LeavesAnIgnoredSignalIgnored)
{
    std::signal(SIGHUP, SIG_IGN);
    {
        const Interruption interruption;
        std::raise(SIGHUP);
        EXPECT_FALSE(Interruption::isRequested());
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(Interruption, EndsTheProcessAfterwards)
{
    EXPECT_EXIT(
        {
            {
                const Interruption interruption;
            }
            std::raise(SIGTERM);
        },
        testing::KilledBySignal(SIGTERM), "");
}

} // namespace
