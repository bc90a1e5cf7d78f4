#include "plan/PlanFindings.h"

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

void PlanFindings::add(const SourcePlace& place, mxmodule::Finding finding)
{
    Listed& listed = finding.severity == mxmodule::Severity::Error ? errors : others;
    if (listed.count == mostFindings) {
        listed.rest = std::max(listed.rest.value_or(finding.severity), finding.severity);
        return;
    }
    ++listed.count;
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
    addRest(others, "warnings and notes", findings);
    addRest(errors, "errors", findings);
    return findings;
}

void PlanFindings::addRest(const Listed& listed, const char* what,
                           std::vector<mxmodule::Finding>& findings) const
{
    if (listed.rest) {
        findings.push_back({*listed.rest, station.file,
                            fmt::format("stopped after {} {} of the plan", mostFindings, what)});
    }
}

} // namespace mxstation
