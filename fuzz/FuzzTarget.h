#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Defined by every file of fuzz/targets: runs the library on the input and returns 0. Crashes,
/// failed assertions and sanitizer findings are defects; a `std::exception` is a valid result.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process unless `condition` holds: the input is then a finding.
inline void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace fuzz
