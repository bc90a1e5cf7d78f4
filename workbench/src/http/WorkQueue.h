#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace workbench {

/// A few threads that do work in the order in which it came.
class WorkQueue
{
public:
    /// Starts `workers` threads. At most `mostWaiting` pieces of work wait for one of them.
    WorkQueue(std::size_t workers, std::size_t mostWaiting);

    /// As `finish`.
    ~WorkQueue();
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;

    /// Adds work, which must not throw. Returns false if too much is waiting, or after `finish`.
    [[nodiscard]] bool add(std::function<void()> work);

    /// Waits until all added work is done, then ends the threads.
    void finish();

private:
    void workUntilFinished();

    const std::size_t mostWaiting;
    std::mutex access;
    std::condition_variable changed;
    std::deque<std::function<void()>> waiting;
    bool isFinished = false;
    std::vector<std::thread> threads;
};

} // namespace workbench
