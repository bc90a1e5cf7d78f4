#pragma once

#include <cstddef>
#include <cstdint>

/// What every file of fuzz/targets defines: uses the library on the input; returns 0. A defect is a
/// crash, a failed assertion or a finding of a sanitizer; `std::exception` is an answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
