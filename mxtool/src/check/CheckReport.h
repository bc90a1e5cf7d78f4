#pragma once

#include "DeviceJson.h"
#include "ModuleFile.h"

#include <optional>

namespace mxtool {

/// Which rules apply, and with which severity.
struct RuleSettings
{
    std::vector<std::string> silenced; ///< Rules whose findings are left out.
    std::vector<std::string> raised;   ///< Rules whose findings are errors.
};

/// The findings in the files of one run.
struct CheckReport
{
    /// The place of a finding in the text form that the file was built from.
    struct TextPlace
    {
        mxauthor::SourceError where; ///< With the finding worded for the text form.
        std::string hint;            ///< What to do; may be empty.
        std::string excerpt;         ///< The line, and a caret below its column.
    };

    struct Entry
    {
        mxauthor::Finding finding;
        mxauthor::Severity severity;
        std::optional<TextPlace> inText; ///< Empty for an mx file.
    };

    struct File
    {
        std::string name;
        std::vector<Entry> entries; ///< Ordered by place in the file or text.
    };

    std::vector<File> files;

    /// Returns the number of findings of `severity`.
    unsigned count(mxauthor::Severity severity) const;
};

/// Checks `module` and applies `settings` to its findings.
CheckReport::File checkedFile(const ModuleFile& module, const RuleSettings& settings);

/// Returns a line per finding and, unless `quiet`, a line with their counts.
std::string checkText(const CheckReport& report, bool coloured, bool quiet);

/// Returns the report, schema "mxtool.check" version 2.
Json checkJson(const CheckReport& report);

/// Returns the report as SARIF 2.1.0.
Json checkSarif(const CheckReport& report);

/// Returns a table of all rules.
std::string ruleListText();

/// Returns all rules, schema "mxtool.check-rules" version 1.
Json ruleListJson();

/// Returns the description of one rule.
std::string ruleText(const mxauthor::CheckRule& rule);

} // namespace mxtool
