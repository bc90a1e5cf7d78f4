#pragma once

#include <chrono>

namespace mxtool {

/// While an object exists, the first SIGINT, SIGTERM or SIGHUP does not end the process: a verb
/// that must not stop in the middle finishes its step and ends. A wait of the system ends early
/// then (EINTR). A second signal ends the process.
class Interruption
{
public:
    Interruption();

    /// Signals end the process again.
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Returns whether such a signal came since the newest object was made.
    static bool isRequested();

    /// Waits until `time`, or until such a signal comes; returns whether it came.
    static bool isRequestedUntil(std::chrono::steady_clock::time_point time);
};

} // namespace mxtool
