#include "simulator/StopSignal.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace mxonline {

StopSignal::StopSignal() : event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (event < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

StopSignal::~StopSignal()
{
    close(event);
}

void StopSignal::raise() const
{
    const std::uint64_t one = 1;
    static_cast<void>(!write(event, &one, sizeof one)); // full: it is raised already
}

bool StopSignal::waitFor(std::chrono::milliseconds time) const
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + time;
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd one{event, POLLIN, 0};
        const int ready =
            poll(&one, 1, static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1000)));
        if (ready > 0) {
            return true;
        }
        if (left.count() <= 0) {
            return false;
        }
    }
}

} // namespace mxonline
