#include "http/WorkQueue.h"

#include <utility>

namespace workbench {

WorkQueue::WorkQueue(std::size_t workers, std::size_t mostWaitingWork)
    : mostWaiting(mostWaitingWork)
{
    try {
        for (std::size_t count = 0; count < workers; ++count) {
            threads.emplace_back([this] { workUntilFinished(); });
        }
    } catch (...) {
        finish();
        throw;
    }
}

WorkQueue::~WorkQueue()
{
    finish();
}

bool WorkQueue::add(std::function<void()> work)
{
    const std::lock_guard<std::mutex> lock(access);
    if (isFinished || waiting.size() >= mostWaiting) {
        return false;
    }
    waiting.push_back(std::move(work));
    changed.notify_one();
    return true;
}

void WorkQueue::finish()
{
    {
        const std::lock_guard<std::mutex> lock(access);
        isFinished = true;
    }
    changed.notify_all();
    for (std::thread& one : std::exchange(threads, {})) {
        one.join();
    }
}

void WorkQueue::workUntilFinished()
{
    std::unique_lock<std::mutex> lock(access);
    while (true) {
        changed.wait(lock, [this] { return isFinished || !waiting.empty(); });
        if (waiting.empty()) {
            return;
        }
        const std::function<void()> work = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        work();
        lock.lock();
    }
}

} // namespace workbench
