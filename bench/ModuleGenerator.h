#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

/// The content of a generated mx file.
struct ModuleShape
{
    unsigned channels = 0;
    unsigned parameters = 0;
    unsigned texts = 0;               ///< Each at least 4 characters long.
    unsigned parametersPerChoice = 4; ///< Every n-th parameter has an option list; 0: none.
    unsigned options = 4;             ///< Of each option list.
    unsigned optionLists = 4;         ///< Used by the parameters in turn.
    std::size_t imageBytes = 0;       ///< Of the product image.
    std::size_t fileBytes = 0;        ///< The texts are lengthened until the file has this size.
    bool sameList = false;            ///< All option lists have the same identifier.
};

constexpr ModuleShape smallModule{8, 10, 30, 4, 4, 2, 0, 1536};
constexpr ModuleShape mediumModule{32, 100, 150, 4, 4, 4, 4096, 10240};
constexpr ModuleShape largeModule{255, 1000, 1200, 4, 4, 8, 0, 65535};

/// Returns an mx file of that shape, the same on every call and machine. Throws
/// `std::invalid_argument` when the content does not fit into the size.
std::vector<char> generateModule(const ModuleShape& shape);

/// Returns the same with another module identifier.
std::vector<char> generateModule(const ModuleShape& shape, std::uint32_t moduleId);

} // namespace bench
