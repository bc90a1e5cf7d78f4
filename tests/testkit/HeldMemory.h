#pragma once

#include <cstddef>

namespace testkit {

/// Bytes that the process holds through operator new, as the allocator rounds them. Counted in
/// programs that have HeldMemory.cpp among their sources.
std::size_t heldBytes();

/// Ends the process when more than `bytes` are held from now on, after `say`.
void limitMemory(std::size_t bytes, void (*say)());

/// Starts to look for the largest number of bytes held from now on.
void startPeak();

/// Returns the largest number of bytes held since `startPeak`.
std::size_t peakBytes();

} // namespace testkit
