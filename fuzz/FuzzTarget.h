#pragma once

#include <cstddef>
#include <cstdint>

/// Defined by every file of fuzz/targets: runs the library on the input and returns 0. Crashes,
/// failed assertions and sanitizer findings are defects; a `std::exception` is a valid result.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
