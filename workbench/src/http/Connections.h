#pragma once

#include "http/Limits.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>

namespace workbench {

/// Where a connection is in its requests.
enum class Phase
{
    New,       ///< No header of a request yet.
    Receiving, ///< The header is complete, the body not.
    Answering, ///< The answer is being made: takes the time that it takes.
    Sending,   ///< The answer is being sent.
    Idle       ///< After an answer.
};

/// The open connections and how long each may still take. A connection that takes longer is shut
/// down: the HTTP library then sees that its client is gone. For any thread.
class Connections
{
public:
    using Clock = std::chrono::steady_clock;

    explicit Connections(const Limits& limits);

    /// Adds the connection of the socket. If there are too many then, the one is shut down that
    /// waits longest for its client.
    void add(int descriptor, Clock::time_point now);

    /// Removes it, before its socket is closed.
    void remove(int descriptor);

    void enter(int descriptor, Phase phase, Clock::time_point now);

    /// Shuts down the connections whose time is over.
    void shutDownOverdue(Clock::time_point now);

    /// Returns how many there are, with those that are shut down and not yet removed.
    std::size_t count() const;

    /// Returns how many were added until now.
    std::size_t countOfAdded() const;

    /// Waits for at most `time` until more than `before` were added.
    void awaitAdded(std::size_t before, Clock::duration time);

    /// Waits for at most `time` until there are fewer than `most`.
    void awaitRoom(std::size_t most, Clock::duration time);

private:
    struct Connection
    {
        Phase phase;
        Clock::time_point since;
        bool isShutDown;
    };
    using Entries = std::map<int, Connection>;

    Clock::duration timeFor(Phase phase) const;
    static void shutDown(Entries::value_type& entry);
    void shutDownLongestWaiting();

    const Limits limits;
    mutable std::mutex access;
    std::condition_variable changed;
    Entries entries;
    std::size_t added = 0;
};

} // namespace workbench
