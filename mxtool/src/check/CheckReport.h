#pragma once

#include "DeviceJson.h"
#include "ModuleFile.h"

#include <optional>

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
    /// Where a finding is in the text form that the file was built from.
    struct TextPlace
    {
        mxauthor::SourceError where; ///< With the finding as it is told there.
        std::string hint;            ///< What to do; may be empty.
        std::string excerpt;         ///< The line, and a caret below its column.
    };

    struct Entry
    {
        mxauthor::Finding finding;
        mxauthor::Severity severity;
        std::optional<TextPlace> inText; ///< Nothing for an mx file.
    };

    struct File
    {
        std::string name;
        std::vector<Entry> entries; ///< In the order of the file or text.
    };

    std::vector<File> files;

    /// Returns how many findings of `severity` there are.
    unsigned count(mxauthor::Severity severity) const;
};

/// Returns what the checker finds in `module`, as the user wants it.
CheckReport::File checkedFile(const ModuleFile& module, const CheckWishes& wishes);

/// Returns a line per finding and, unless `quiet`, one with their numbers.
std::string checkText(const CheckReport& report, bool coloured, bool quiet);

/// Returns the report, schema "mxtool.check" version 2.
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
