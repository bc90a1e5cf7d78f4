#include "report/UtcTime.h"

#include <fmt/format.h>

#include <chrono>
#include <ctime>

namespace mxonline {

std::string utcTime()
{
    using std::chrono::milliseconds;
    const auto now = std::chrono::system_clock::now();
    const auto sinceEpoch = std::chrono::duration_cast<milliseconds>(now.time_since_epoch());
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", utc.tm_year + 1900,
                       utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                       sinceEpoch.count() % 1000);
}

} // namespace mxonline
