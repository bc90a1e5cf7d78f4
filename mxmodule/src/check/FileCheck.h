#pragma once

#include <mxauthor/Check.h>
#include <mxauthor/TextForm.h>
#include <mxmodule/Check.h>

#include <string>
#include <vector>

namespace mxmodule {

Severity severityOf(mxauthor::Severity severity);

/// Checks the mx data `bytes` of the file `name`.
std::vector<CheckFinding> findingsInFile(const std::string& name, const std::vector<char>& bytes,
                                         const RuleSettings& settings);

/// Checks the file `built` from `source`, the text of the file `name`.
std::vector<CheckFinding> findingsInText(const std::string& name, const std::string& source,
                                         const mxauthor::BuildResult& built,
                                         const RuleSettings& settings);

/// The violations of rules in a file that was built from a text.
struct TextCheck
{
    std::vector<CheckFinding> findings; ///< In the order of the text.
    bool isRefused = false;             ///< One of them means that the device parser refuses it.
};

/// Checks the file `built` from `source`, the text of the file `name`.
TextCheck checkOfText(const std::string& name, const std::string& source,
                      const mxauthor::BuildResult& built);

} // namespace mxmodule
