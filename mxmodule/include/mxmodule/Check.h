#pragma once

#include "mxmodule/Finding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// A rule of the mx format.
struct CheckRule
{
    std::string name;                    ///< As in findings and settings.
    Severity severity = Severity::Error; ///< Of its findings.
    std::string explanation;             ///< What is wrong, and its effect on readers.
    std::string example;                 ///< A finding.
};

/// Returns every rule, in the order of the documentation.
MXMODULE_API std::vector<CheckRule> checkRules();

/// Which rules apply, and with which severity. A name that no rule has is without effect.
struct RuleSettings
{
    std::vector<std::string> silenced; ///< Rules whose findings are left out.
    std::vector<std::string> raised;   ///< Rules whose findings are errors.
};

/// A place where an mx file breaks a rule.
struct CheckFinding
{
    std::string rule;                ///< Its name.
    Finding finding;                 ///< As it is shown; `text` begins with the rule in brackets.
    std::string subject;             ///< Such as `parameter 3 "Filter"`; may be empty.
    std::string text;                ///< What is wrong, without rule and subject.
    std::size_t offset = 0;          ///< First byte in the mx file.
    std::size_t length = 0;          ///< In bytes.
    std::optional<unsigned> group;   ///< Empty: it concerns the file, or bytes outside its groups.
    std::optional<std::size_t> line; ///< In the text form, from 1; empty for an mx file.
    std::optional<std::size_t> column; ///< In the text form, from 1, in characters.
};

/// The findings in one file, ordered by their places.
struct CheckedFile
{
    std::string name;                   ///< Of the file, for messages.
    std::vector<CheckFinding> findings; ///< Empty: no rule is broken.
};

/// Returns the number of findings of `severity` in `files`.
MXMODULE_API std::size_t countOf(Severity severity, const std::vector<CheckedFile>& files);

/// Returns the findings in `files` as JSON, schema "mxtool.check" version 2.
MXMODULE_API std::string checkJson(const std::vector<CheckedFile>& files);

/// Returns the findings in `files` as SARIF 2.1.0.
MXMODULE_API std::string checkSarif(const std::vector<CheckedFile>& files);

/// Returns all rules as JSON, schema "mxtool.check-rules" version 1.
MXMODULE_API std::string checkRulesJson();

} // namespace mxmodule
