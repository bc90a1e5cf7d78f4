#include "mxonline/ApplyReport.h"

#include <text/Counted.h>

#include <algorithm>

namespace mxonline {

const char* writeOutcomeName(WriteOutcome outcome)
{
    switch (outcome) {
    case WriteOutcome::Verified:
        return "verified";
    case WriteOutcome::Different:
        return "different";
    default:
        return "not read back";
    }
}

namespace {

std::size_t countOf(const ApplyReport& report, WriteOutcome outcome)
{
    std::size_t count = 0;
    for (const AppliedModule& module : report.modules) {
        count += static_cast<std::size_t>(std::count_if(
            module.parameters.begin(), module.parameters.end(),
            [outcome](const AppliedParameter& one) { return one.outcome == outcome; }));
    }
    return count;
}

bool hasError(const ApplyReport& report)
{
    return std::any_of(report.findings.begin(), report.findings.end(),
                       [](const mxmodule::Finding& finding) {
                           return finding.severity == mxmodule::Severity::Error;
                       });
}

} // namespace

bool ApplyReport::isDone() const
{
    return reasons().empty();
}

std::vector<std::string> ApplyReport::reasons() const
{
    std::vector<std::string> all;
    if (!isReadBack) {
        all.emplace_back(
            "the parameters were not read back: what the coupler has now is not known");
    }
    const std::size_t different = countOf(*this, WriteOutcome::Different);
    if (different != 0) {
        all.push_back(text::counted(different, "parameter") + (different == 1 ? " is" : " are") +
                      " not as planned");
    }
    if (map.commit && !isCommitted) {
        all.emplace_back("the commit was not confirmed: what was written may not be active");
    }
    const bool isLeft = isReadBack && countOf(*this, WriteOutcome::NotReadBack) != 0;
    if (all.empty() && (hasError(*this) || isLeft)) {
        all.emplace_back("a request failed, see the faults");
    }
    return all;
}

} // namespace mxonline
