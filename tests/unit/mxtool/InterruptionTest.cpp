#include "Interruption.h"

#include <gtest/gtest.h>

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
