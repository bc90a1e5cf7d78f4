#pragma once

#include "mxauthor/TextForm.h"

#include <set>
#include <string>

namespace mxauthor {

/// The repetitions of one repeated line that something is said of.
class Repetitions
{
public:
    /// Returns false when the repetition is there already.
    bool add(const Repetition& repetition);

    /// Returns " (in all 8 repetitions)", " (in 3 of 8 repetitions, first in repetition 2)" or
    /// " (in repetition 8 of 8)"; empty for a line that is not repeated.
    std::string text() const;

private:
    std::set<std::uint32_t> numbers;
    std::uint32_t count = 0; // of the whole line
};

} // namespace mxauthor
