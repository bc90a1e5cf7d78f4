#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

/// What a generated mx file holds.
struct ModuleShape
{
    unsigned channels = 0;
    unsigned parameters = 0;
    unsigned texts = 0;               ///< Every one at least 4 characters long.
    unsigned parametersPerChoice = 4; ///< Every n-th parameter has an option list; 0: none has.
    unsigned options = 4;             ///< Of each option list.
    unsigned optionLists = 4;         ///< The parameters take them in turn.
    std::size_t imageBytes = 0;       ///< Of the product image.
    std::size_t fileBytes = 0;        ///< The texts are made longer until the file has this size.
    bool sameList = false;            ///< Every option list has one identifier.
};

constexpr ModuleShape smallModule{8, 10, 30, 4, 4, 2, 0, 1536};
constexpr ModuleShape mediumModule{32, 100, 150, 4, 4, 4, 4096, 10240};
constexpr ModuleShape largeModule{255, 1000, 1200, 4, 4, 8, 0, 65535};

/// Returns the bytes of an mx file of that shape, the same for every call and machine. Throws
/// `std::invalid_argument` when the shape does not fit into its size.
std::vector<char> generateModule(const ModuleShape& shape);

/// Returns the same with another module identifier.
std::vector<char> generateModule(const ModuleShape& shape, std::uint32_t moduleId);

} // namespace bench
