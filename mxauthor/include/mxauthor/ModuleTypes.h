#pragma once

#include <cstdint>
#include <vector>

namespace mxauthor {

/// A module type and its meaning to module manufacturers. Readers show the number only.
struct ModuleType
{
    std::uint8_t number;
    const char* meaning;
};

/// Returns the types that are in use, in the order of their numbers.
const std::vector<ModuleType>& moduleTypes();

} // namespace mxauthor
