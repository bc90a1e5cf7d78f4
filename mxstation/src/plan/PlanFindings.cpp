#include "plan/PlanFindings.h"

#include "text/StationErrors.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxstation {

void PlanFindings::add(const SourcePlace& place, mxmodule::Severity severity,
                       const std::string& text, const std::string& hint,
                       const std::vector<std::string>& accepted)
{
    mxmodule::Finding finding{severity, "", text, hint};
    finding.accepted = accepted;
    add(place, std::move(finding));
}

bool PlanFindings::isFull() const
{
    return all.size() >= mostFindings;
}

void PlanFindings::add(const SourcePlace& place, mxmodule::Finding finding)
{
    if (isFull()) {
        rest = std::max(rest.value_or(finding.severity), finding.severity);
        return;
    }
    const auto located =
        findingAt(station.file, station.source, place, finding.severity, finding.text);
    finding.place = located.place;
    finding.excerpt = located.excerpt;
    finding.origin = mxmodule::Origin::Input;
    all.emplace_back(place, std::move(finding));
}

std::vector<mxmodule::Finding> PlanFindings::sorted() const
{
    auto ordered = all;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const auto& a, const auto& b) { return isBefore(a.first, b.first); });
    std::vector<mxmodule::Finding> findings;
    findings.reserve(ordered.size());
    for (auto& [place, finding] : ordered) {
        findings.push_back(std::move(finding));
    }
    if (rest) {
        findings.push_back({*rest, station.file,
                            fmt::format("stopped after {} findings of the plan", mostFindings)});
    }
    return findings;
}

} // namespace mxstation
