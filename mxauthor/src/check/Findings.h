#pragma once

#include "mxauthor/Check.h"

namespace mxauthor {

constexpr Severity note = Severity::Note;
constexpr Severity warning = Severity::Warning;
constexpr Severity error = Severity::Error;

/// Collects what the checks find.
class Findings
{
public:
    /// Adds a finding in a group.
    void add(const CheckRule& rule, const Place& place, const std::string& subject,
             const std::string& text);

    /// Adds a finding about the default of the parameter whose number is at `parameter`.
    void addDefault(const CheckRule& rule, const Place& place, const Place& parameter,
                    const std::string& subject, const std::string& text);

    /// Adds a finding that concerns the file, or bytes outside its groups.
    void addToFile(const CheckRule& rule, const Place& place, const std::string& text);

    /// Returns the findings ordered by their place.
    std::vector<Finding> sorted() &&;

private:
    std::vector<Finding> all;
};

} // namespace mxauthor
