#pragma once

#include "DeviceJson.h"

#include <mxauthor/Check.h>

namespace mxtool {

/// Which findings count, and as what.
struct CheckWishes
{
    std::vector<std::string> silenced; ///< Rules that are left out.
    std::vector<std::string> raised;   ///< Rules that are errors.
};

/// What the checker found in the files of a call.
struct CheckReport
{
    struct Entry
    {
        mxauthor::Finding finding;
        mxauthor::Severity severity;
    };

    struct File
    {
        std::string name;
        std::vector<Entry> entries; ///< In the order of the file.
    };

    std::vector<File> files;

    /// Returns how many findings of `severity` there are.
    unsigned count(mxauthor::Severity severity) const;
};

/// Returns what the checker finds in the mx data `bytes`, as the user wants it.
CheckReport::File checkedFile(const std::string& name, const std::vector<char>& bytes,
                              const CheckWishes& wishes);

/// Returns a line per finding and, unless `quiet`, one with their numbers.
std::string checkText(const CheckReport& report, bool coloured, bool quiet);

/// Returns the report, schema "mxtool.check" version 1.
Json checkJson(const CheckReport& report);

/// Returns the report as SARIF 2.1.0.
Json checkSarif(const CheckReport& report);

/// Returns a table of all rules.
std::string ruleListText();

/// Returns all rules, schema "mxtool.check-rules" version 1.
Json ruleListJson();

/// Returns what there is to say of one rule.
std::string ruleText(const mxauthor::CheckRule& rule);

} // namespace mxtool
