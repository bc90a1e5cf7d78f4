#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What a station may state of the registers of a coupler: words, function codes, limits.

namespace mxstation {

/// Those of `PartOrder`, in the order of the enumerators.
inline const std::vector<std::string> partOrderWords = {"big", "little"};

/// What is read after parameters were written and before they are committed.
inline const std::vector<std::string> stagedWords = {"staged", "active"};

/// Functions that read registers: holding registers, input registers.
inline const std::vector<std::uint32_t> readFunctions = {3, 4};

/// Functions that write registers: one, several, some bits of one.
inline const std::vector<std::uint32_t> writeFunctions = {6, 16, 22};

/// The least and the largest number that is allowed.
struct NumberLimits
{
    std::uint32_t least;
    std::uint32_t most;
};

constexpr NumberLimits registerLimits{0, 65535};
constexpr NumberLimits valueLimits{0, 65535};
constexpr NumberLimits unitLimits{0, 255};
constexpr NumberLimits strideLimits{1, 65535};
constexpr NumberLimits identityStrideLimits{2, 65535};
constexpr NumberLimits mostReadLimits{4, 125};    // as a request of the protocol
constexpr NumberLimits mostWrittenLimits{4, 123}; // as a request of the protocol
constexpr NumberLimits timeoutLimits{1, 60000};
constexpr NumberLimits busyLimits{0, 600000};
constexpr NumberLimits retriesLimits{0, 10};

} // namespace mxstation
