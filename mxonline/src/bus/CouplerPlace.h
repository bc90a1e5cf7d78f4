#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

namespace mxonline {

/// Returns the coupler as messages name it: "tcp:192.168.1.10:502 unit 1".
inline std::string couplerPlace(const std::string& target, std::uint8_t unit)
{
    return fmt::format("{} unit {}", target, unit);
}

} // namespace mxonline
