#pragma once

namespace mxtool {

/// While an object exists, the first SIGINT or SIGTERM does not end the process: a verb that must
/// not stop in the middle finishes its step and ends. A wait of the system ends early then (EINTR).
/// A second signal ends the process.
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
};

} // namespace mxtool
