#pragma once

#include <cstddef>
#include <vector>

namespace damage {

/// How the operations on a file ended.
struct Outcome
{
    std::size_t operations = 0; ///< All of them.
    std::size_t failures = 0;   ///< Ended with an exception.
    bool isDevice = false;      ///< The file was translated.
};

/// Whether what the operations find is put into every form that the verbs print as well. That takes
/// ten times as long, and reads nothing of the file any more.
enum class Printing
{
    None,
    EveryForm
};

/// Puts the bytes of an mx file through every operation of the libraries and of the verbs.
/// `original` is the file before it was damaged, for the comparison.
Outcome runEveryOperation(const std::vector<char>& file, const std::vector<char>& original,
                          Printing printing);

} // namespace damage
