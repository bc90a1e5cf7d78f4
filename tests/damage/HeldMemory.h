#pragma once

#include <cstddef>

namespace damage {

/// Bytes that the process holds through operator new. Counted in the program that is linked with
/// HeldMemory.cpp.
std::size_t heldBytes();

/// Ends the process when more than `bytes` are held from now on, after `say`.
void limitMemory(std::size_t bytes, void (*say)());

/// Starts to look for the largest number of bytes held from now on.
void startPeak();

/// Returns the largest number of bytes held since `startPeak`.
std::size_t peakBytes();

} // namespace damage
