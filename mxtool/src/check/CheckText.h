#pragma once

#include <mxmodule/Check.h>

#include <string>
#include <vector>

namespace mxtool {

/// Returns the findings in `files` and, unless `quiet`, a line with their counts.
std::string checkText(const std::vector<mxmodule::CheckedFile>& files, bool coloured, bool quiet);

/// Returns a table of all rules.
std::string ruleListText();

/// Returns the description of one rule.
std::string ruleText(const mxmodule::CheckRule& rule);

} // namespace mxtool
