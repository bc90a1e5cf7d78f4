#include "report/UtcTime.h"

#include <fmt/format.h>

#include <chrono>
#include <ctime>

namespace mxonline {

std::string utcTime()
{
    return utcTime(std::chrono::system_clock::now());
}

std::string utcTime(std::chrono::system_clock::time_point time)
{
    using std::chrono::milliseconds;
    const auto sinceEpoch = std::chrono::duration_cast<milliseconds>(time.time_since_epoch());
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", utc.tm_year + 1900,
                       utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                       sinceEpoch.count() % 1000);
}

} // namespace mxonline
