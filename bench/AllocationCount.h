#pragma once

#include <cstddef>

namespace bench {

/// Bytes that the process holds through operator new, as the allocator rounds them. Counted in
/// programs that are linked with AllocationCount.cpp.
std::size_t heldBytes();

/// Starts to look for the largest number of bytes held from now on.
void startPeak();

/// Returns the largest number of bytes held since `startPeak`.
std::size_t peakBytes();

} // namespace bench
