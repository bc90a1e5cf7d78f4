#pragma once

#include "mxauthor/Check.h"
#include "mxauthor/TextForm.h"

namespace mxauthor {

/// A finding in the mx file that a text stands for, told at the text. Texts are UTF-8.
struct TextFinding
{
    const CheckRule* rule = nullptr;
    SourceError where; ///< With the text of the finding.
    std::string hint;  ///< What to do; may be empty.
    Finding finding;   ///< The same in the built file.
};

/// Holds the file that was `built` from `source`, without errors, against every rule of `check`.
/// Returns all findings in the order of the text. What several repetitions of a line have in common
/// (the rule and the place in the text) is one finding, that of the first, whose text says so.
[[nodiscard]] std::vector<TextFinding> checkText(const std::string& source,
                                                 const BuildResult& built);

/// Returns whether one of `findings` says that the device parser refuses the file.
[[nodiscard]] bool isRefused(const std::vector<TextFinding>& findings);

} // namespace mxauthor
