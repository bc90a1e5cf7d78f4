#include "http/Connections.h"

#include <sys/socket.h>

#include <algorithm>
#include <tuple>

namespace workbench {

namespace {

// Connections without a request are given up before those with one.
int rankOf(Phase phase)
{
    switch (phase) {
    case Phase::Idle:
        return 0;
    case Phase::New:
        return 1;
    case Phase::Receiving:
        return 2;
    case Phase::Sending:
        return 3;
    case Phase::Answering:
        break;
    }
    return 4;
}

} // namespace

Connections::Connections(const Limits& limitsOfServer) : limits(limitsOfServer) {}

void Connections::add(int descriptor, Clock::time_point now)
{
    const std::lock_guard<std::mutex> lock(access);
    const auto open = std::count_if(entries.begin(), entries.end(),
                                    [](const auto& entry) { return !entry.second.isShutDown; });
    if (static_cast<std::size_t>(open) >= limits.connections) {
        shutDownLongestWaiting();
    }
    entries.insert_or_assign(descriptor, Connection{Phase::New, now, false});
    ++added;
    changed.notify_all();
}

void Connections::remove(int descriptor)
{
    const std::lock_guard<std::mutex> lock(access);
    entries.erase(descriptor);
    changed.notify_all();
}

void Connections::enter(int descriptor, Phase phase, Clock::time_point now)
{
    const std::lock_guard<std::mutex> lock(access);
    const auto entry = entries.find(descriptor);
    if (entry != entries.end()) {
        entry->second.phase = phase;
        entry->second.since = now;
    }
}

void Connections::shutDownOverdue(Clock::time_point now)
{
    const std::lock_guard<std::mutex> lock(access);
    for (auto& entry : entries) {
        const Connection& connection = entry.second;
        if (connection.phase != Phase::Answering &&
            now - connection.since > timeFor(connection.phase)) {
            shutDown(entry);
        }
    }
}

std::size_t Connections::count() const
{
    const std::lock_guard<std::mutex> lock(access);
    return entries.size();
}

std::size_t Connections::countOfAdded() const
{
    const std::lock_guard<std::mutex> lock(access);
    return added;
}

void Connections::awaitAdded(std::size_t before, Clock::duration time)
{
    std::unique_lock<std::mutex> lock(access);
    changed.wait_for(lock, time, [this, before] { return added > before; });
}

void Connections::awaitRoom(std::size_t most, Clock::duration time)
{
    std::unique_lock<std::mutex> lock(access);
    changed.wait_for(lock, time, [this, most] { return entries.size() < most; });
}

Connections::Clock::duration Connections::timeFor(Phase phase) const
{
    switch (phase) {
    case Phase::New:
        return limits.forHeader;
    case Phase::Receiving:
        return limits.forBody;
    case Phase::Sending:
        return limits.forReading;
    case Phase::Idle:
        return limits.forNextHeader;
    case Phase::Answering:
        break;
    }
    return Clock::duration::max();
}

// Its owner closes it. Until then it is not counted.
void Connections::shutDown(Entries::value_type& entry)
{
    if (!entry.second.isShutDown) {
        entry.second.isShutDown = true;
        static_cast<void>(shutdown(entry.first, SHUT_RDWR));
    }
}

void Connections::shutDownLongestWaiting()
{
    const auto order = [](const Entries::value_type& entry) {
        return std::make_tuple(entry.second.isShutDown, rankOf(entry.second.phase),
                               entry.second.since);
    };
    const auto first = std::min_element(
        entries.begin(), entries.end(),
        [&order](const auto& one, const auto& other) { return order(one) < order(other); });
    if (first != entries.end() && first->second.phase != Phase::Answering) {
        shutDown(*first);
    }
}

} // namespace workbench
