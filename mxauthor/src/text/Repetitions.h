#pragma once

#include "mxauthor/TextForm.h"

#include <set>
#include <string>

namespace mxauthor {

/// The repetitions of a repeated line that an error or finding concerns.
class Repetitions
{
public:
    /// Adds a repetition. Returns false if it was added before.
    bool add(const Repetition& repetition);

    /// Returns " (in all 8 repetitions)", " (in 3 of 8 repetitions, first in repetition 2)" or
    /// " (in repetition 8 of 8)"; empty for a line that is not repeated.
    std::string text() const;

private:
    std::set<std::uint32_t> numbers;
    std::uint32_t count = 0; // of the whole line
};

} // namespace mxauthor
