#pragma once

#include <mxstation/Station.h>

#include <string>
#include <vector>

namespace mxstation {

/// Returns whether `a` is before `b` in a text.
bool isBefore(const SourcePlace& a, const SourcePlace& b);

/// Returns `place` in the text `file` as messages show it: "FILE:LINE:COLUMN"; `file` alone for a
/// place that is not in a text.
std::string placeText(const std::string& file, const SourcePlace& place);

/// Returns "in line 3"; "elsewhere" for a place that is not in a text.
std::string lineText(const SourcePlace& place);

/// Returns a finding at `place` of `source`, the text called `file`, with the line and a caret.
mxmodule::Finding findingAt(const std::string& file, const std::string& source,
                            const SourcePlace& place, mxmodule::Severity severity,
                            const std::string& text, const std::string& hint = {});

/// Most findings of a text, and of a plan: each may name everything that is accepted.
constexpr std::size_t mostFindings = 100;

/// Collects the errors of the text of a station, in the order of the text. Of more than
/// `mostFindings` the rest is one error.
class StationErrors
{
public:
    /// `described` outlives the object; its file and source are known.
    explicit StationErrors(Station& described) : station(described) {}

    /// Adds an error. `accepted` lists what is accepted instead, where that can be listed.
    void add(const SourcePlace& place, const std::string& text, const std::string& hint = {},
             const std::vector<std::string>& accepted = {});

    /// Adds the error that `word` is not one of `accepted`, with the nearest of them.
    void addUnknown(const SourcePlace& place, const std::string& what, const std::string& word,
                    const std::vector<std::string>& accepted);

    /// Returns whether further errors are not listed.
    bool isFull() const { return station.findings.size() > mostFindings; }

private:
    Station& station;
    std::vector<SourcePlace> places; // of the station's findings
};

} // namespace mxstation
