#pragma once

#include <mxstation/Station.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mxstation {

/// Collects the findings of a plan, each at its place in the station's text. Of more than
/// `mostFindings` the rest is one finding, an error if there is one among them.
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

    /// Returns whether further findings are not listed.
    bool isFull() const;

    /// Returns all, in the order of the text.
    std::vector<mxmodule::Finding> sorted() const;

private:
    const Station& station;
    std::vector<std::pair<SourcePlace, mxmodule::Finding>> all;
    std::optional<mxmodule::Severity> rest; // the highest of those that are not listed
};

} // namespace mxstation
