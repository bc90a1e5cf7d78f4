#pragma once

#include "mxauthor/Field.h"

#include <string>
#include <vector>

namespace mxauthor {

enum class Severity
{
    Note,    ///< For information; nothing goes wrong.
    Warning, ///< Data that readers ignore or read differently from how it looks.
    Error    ///< The file is rejected, or the module cannot be used as described.
};

/// A rule for mx files.
struct CheckRule
{
    const char* name;
    Severity severity;
    const char* explanation; ///< What is wrong, and its effect on readers.
    const char* example;     ///< A finding, as `describe` gives it.
    const char* hint = "";   ///< How to correct a text form; {key} is the key of the group.
};

/// Returns every rule, in the order of the documentation.
const std::vector<const CheckRule*>& checkRules();

/// A place where an mx file breaks a rule. Texts hold bytes of the file.
struct Finding
{
    const CheckRule* rule = nullptr;
    Place place;
    bool inGroup = true; ///< False: it concerns the file, or bytes outside its groups.
    std::string subject; ///< Such as `parameter 3 "Filter"`; may be empty.
    std::string text;
    Place parameter; ///< For a finding about a default: the number in its parameter's record.
};

/// Returns whether the finding means that the device parser rejects the file.
bool isRefusal(const Finding& finding);

/// Returns the finding as `group 20c0, parameter 3 "Filter": text`.
std::string describe(const Finding& finding);

/// Checks the mx data `bytes` (those of the file, nothing after them) against every rule; one rule
/// is that the device parser reads them. Returns all findings, ordered by their place in the file.
[[nodiscard]] std::vector<Finding> check(const std::vector<char>& bytes);

/// The same without the device parser. Several threads may call it at once, as they may `explain`
/// and `compare`.
std::vector<Finding> checkContent(const std::vector<char>& bytes);

} // namespace mxauthor
