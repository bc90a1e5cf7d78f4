#pragma once

#include "mxauthor/Check.h"

namespace mxauthor {

/// Collects what the checks find.
class Findings
{
public:
    /// Adds a finding in a group. There is a rule of this name.
    void add(const char* rule, const Place& place, const std::string& subject,
             const std::string& text);

    /// Adds a finding about the default of the parameter whose number is at `parameter`.
    void addDefault(const char* rule, const Place& place, const Place& parameter,
                    const std::string& subject, const std::string& text);

    /// Adds a finding that concerns the file, or bytes outside its groups.
    void addToFile(const char* rule, const Place& place, const std::string& text);

    /// Returns the findings ordered by their place.
    std::vector<Finding> sorted() &&;

private:
    std::vector<Finding> all;
};

} // namespace mxauthor
