#include "http/WorkQueue.h"

#include <gmock/gmock.h>

#include <future>

namespace {

using workbench::WorkQueue;

TEST(WorkQueue, doesAllWorkBeforeItEnds)
{
    std::atomic<int> done = 0;
    {
        WorkQueue queue(2, 100);
        for (int count = 0; count < 100; ++count) {
            EXPECT_TRUE(queue.add([&done] { ++done; }));
        }
    }
    EXPECT_EQ(done, 100);
}

TEST(WorkQueue, takesNoMoreThanMayWait)
{
    std::promise<void> begun;
    std::promise<void> mayEnd;
    WorkQueue queue(1, 2);
    ASSERT_TRUE(queue.add([&] {
        begun.set_value();
        mayEnd.get_future().wait();
    }));
    begun.get_future().wait();
    EXPECT_TRUE(queue.add([] {}));
    EXPECT_TRUE(queue.add([] {}));
    EXPECT_FALSE(queue.add([] { ADD_FAILURE(); }));
    mayEnd.set_value();
    queue.finish();
    EXPECT_FALSE(queue.add([] { ADD_FAILURE(); }));
}

} // namespace
