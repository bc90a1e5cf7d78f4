#pragma once

#include "mxauthor/Check.h"
#include "mxauthor/TextForm.h"

namespace mxauthor {

/// A finding in the mx file built from a text, with its place in the text. Texts are UTF-8.
struct TextFinding
{
    const CheckRule* rule = nullptr;
    SourceError where; ///< Place, and the text of the finding.
    std::string hint;  ///< What to do; may be empty.
    Finding finding;   ///< The same in the built file.
};

/// Checks the file `built` from `source` without errors against every rule of `check`. Returns all
/// findings in the order of the text. Findings of several repetitions of a line with the same rule
/// and place in the text are one finding, that of the first, which names the repetitions.
[[nodiscard]] std::vector<TextFinding> checkText(const std::string& source,
                                                 const BuildResult& built);

/// Returns whether one of `findings` means that the device parser rejects the file.
[[nodiscard]] bool isRefused(const std::vector<TextFinding>& findings);

} // namespace mxauthor
