#pragma once

#include <cstdint>
#include <vector>

namespace mxauthor {

/// A module type and what the makers of modules mean by it. Readers show the number alone.
struct ModuleType
{
    std::uint8_t number;
    const char* meaning;
};

/// Returns the types that are in use, by their numbers.
const std::vector<ModuleType>& moduleTypes();

} // namespace mxauthor
