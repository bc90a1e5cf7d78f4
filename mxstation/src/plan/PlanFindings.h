#pragma once

#include "text/StationErrors.h"

#include <mxstation/Station.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mxstation {

/// Collects the findings of a plan, each at its place in the station's text. Of more than
/// `mostFindings` errors, and of more than so many others, the rest is one finding.
class PlanFindings
{
public:
    /// `planned` outlives the object.
    explicit PlanFindings(const Station& planned) : station(planned) {}

    /// Adds a finding about the station, with the line of the text.
    void add(const SourcePlace& place, mxmodule::Severity severity, const std::string& text,
             const std::string& hint = {}, const std::vector<std::string>& accepted = {});

    /// Adds a finding of a module about what is stated at `place`.
    void add(const SourcePlace& place, mxmodule::Finding finding);

    /// Returns whether further errors are not listed.
    bool isFull() const { return errors.count == mostFindings; }

    /// Returns all, in the order of the text.
    std::vector<mxmodule::Finding> sorted() const;

private:
    struct Listed
    {
        std::size_t count = 0;
        std::optional<mxmodule::Severity> rest = {}; // the highest of those that are not listed
    };

    void addRest(const Listed& listed, const char* what,
                 std::vector<mxmodule::Finding>& findings) const;

    const Station& station;
    std::vector<std::pair<SourcePlace, mxmodule::Finding>> all;
    Listed errors;
    Listed others; // warnings must not hide an error
};

} // namespace mxstation
