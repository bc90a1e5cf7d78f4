#pragma once

#include "http/LoopbackSockets.h"

#include <chrono>
#include <functional>
#include <thread>

namespace workbench {

/// A thread that accepts connections, and calls a function at least once in each `tick`.
class AcceptLoop
{
public:
    /// `accepted` gets the socket of each connection, which it owns then. Both functions must not
    /// throw. `sockets` must outlive the object.
    AcceptLoop(const LoopbackSockets& sockets, std::function<void(int)> accepted,
               std::function<void()> ticked, std::chrono::milliseconds tick);

    /// Ends the thread.
    ~AcceptLoop();
    AcceptLoop(const AcceptLoop&) = delete;
    AcceptLoop& operator=(const AcceptLoop&) = delete;

private:
    void run() const;
    void acceptOne(int listener) const;

    const LoopbackSockets& sockets;
    const std::function<void(int)> accepted;
    const std::function<void()> ticked;
    const std::chrono::milliseconds tick;
    const int stop; // an event
    std::thread thread;
};

} // namespace workbench
