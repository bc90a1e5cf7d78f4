#include "mxonline/TimeText.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>
#include <text/Beginning.h>

#include <array>
#include <charconv>
#include <optional>
#include <string_view>

namespace mxonline {

namespace {

struct TimeUnit
{
    std::string_view name;
    std::int64_t milliseconds;
};

constexpr std::array<TimeUnit, 4> timeUnits = {
    {{"h", 3600000}, {"m", 60000}, {"s", 1000}, {"ms", 1}}};
constexpr std::int64_t longestTime = 24 * timeUnits[0].milliseconds;

std::optional<std::int64_t> millisecondsOf(std::string_view text)
{
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || text.front() == '-') {
        return std::nullopt;
    }
    const std::string_view name(rest, static_cast<std::size_t>(end - rest));
    for (const TimeUnit& unit : timeUnits) {
        if (name == unit.name && number <= longestTime / unit.milliseconds) {
            return number * unit.milliseconds;
        }
    }
    return std::nullopt;
}

} // namespace

std::chrono::milliseconds timeOf(const std::string& text)
{
    const auto time = text.empty() ? std::nullopt : millisecondsOf(text);
    if (!time) {
        throw mxmodule::Failure(
            mxmodule::Origin::Request, "",
            fmt::format("found the time \"{}\", expected a whole number and ms, s, m or h, at most "
                        "24h",
                        text::abbreviated(text)),
            "such as 10ms, 1s or 5m");
    }
    return std::chrono::milliseconds(*time);
}

std::string timeText(std::chrono::milliseconds time)
{
    for (const TimeUnit& unit : timeUnits) {
        if (time.count() != 0 && time.count() % unit.milliseconds == 0) {
            return fmt::format("{}{}", time.count() / unit.milliseconds, unit.name);
        }
    }
    return "0s";
}

} // namespace mxonline
