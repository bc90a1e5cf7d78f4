#pragma once

#include "devices/database/DeviceDatabase.h"

#include <cstddef>
#include <vector>

namespace devices::database {

/// A batch of several modules has about so many bytes at most, in the memory of this process.
inline constexpr std::size_t mostBytesOfBatch = 8U << 20U;

/// Positions in a list of modules.
using ModulePositions = std::vector<std::size_t>;

/// Splits `modules` into batches that are stored one after the other. Each key (family and module
/// identifier) is in a batch once; of several modules with the same key the earlier one is in an
/// earlier batch, so that the last one is stored.
std::vector<ModulePositions> batchesOf(const std::vector<ModuleToStore>& modules);

} // namespace devices::database
