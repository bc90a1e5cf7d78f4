#include "mxonline/ApplyReport.h"

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

bool ApplyReport::isDone() const
{
    const bool hasError =
        std::any_of(findings.begin(), findings.end(), [](const mxmodule::Finding& finding) {
            return finding.severity == mxmodule::Severity::Error;
        });
    return isReadBack && !hasError && (isCommitted || !map.commit);
}

} // namespace mxonline
