#pragma once

#include "SourceErrors.h"

namespace mxauthor {

/// A list of the text form whose lines may be repeated.
struct RepeatableList
{
    std::string what;                        ///< What a line defines, in the plural.
    std::vector<std::string> distinguishing; ///< Keys of which one has to hold the number, or names
                                             ///< are alike.
    std::size_t most = 0;                    ///< Maximum number of lines: as many as a group holds.
};

/// Returns the lines of `list`, those with `repeat` written out as often as it says, with the
/// number of the repetition in place of <n>. Errors of a written out line are reported at the line
/// of the text that it comes from.
std::vector<YAML::Node> writtenOutLines(const YAML::Node& list, const RepeatableList& form,
                                        SourceErrors& errors);

} // namespace mxauthor
