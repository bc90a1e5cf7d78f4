#pragma once

#include <chrono>

namespace mxonline {

/// Ends the waiting of another thread.
class StopSignal
{
public:
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    void raise() const;

    /// Waits until it is raised, for at most `time`; returns whether it is.
    bool waitFor(std::chrono::milliseconds time) const;

    /// Can be read once it is raised. To be waited for with others.
    int descriptor() const { return event; }

private:
    int event;
};

} // namespace mxonline
