#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The words and function codes of the registers of a coupler.

namespace mxstation {

/// Those of `PartOrder`, in the order of the enumerators.
inline const std::vector<std::string> partOrderWords = {"big", "little"};

/// What is read after parameters were written and before they are committed.
inline const std::vector<std::string> stagedWords = {"staged", "active"};

/// Functions that read registers: holding registers, input registers.
inline const std::vector<std::uint32_t> readFunctions = {3, 4};

/// Functions that write registers: one, several, some bits of one.
inline const std::vector<std::uint32_t> writeFunctions = {6, 16, 22};

} // namespace mxstation
