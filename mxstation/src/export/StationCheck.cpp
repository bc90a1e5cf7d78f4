#include "mxstation/StationCheck.h"

#include <text/JsonText.h>
#include <text/Utf8.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Finding;
using mxmodule::Severity;

text::Json findingJson(const Finding& finding)
{
    return {{"severity", severityName(finding.severity)},
            {"place", text::toUtf8(finding.place)},
            {"text", text::toUtf8(finding.text)},
            {"hint", text::toUtf8(finding.hint)},
            {"accepted", finding.accepted}};
}

} // namespace

std::size_t StationCheck::countOf(Severity severity) const
{
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [severity](const Finding& finding) { return finding.severity == severity; }));
}

std::string StationCheck::json() const
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.station-check", 1)},
                           {"findings", text::listJson(findings, findingJson)},
                           {"errors", countOf(Severity::Error)},
                           {"notes", countOf(Severity::Note)}});
}

StationCheck checkOf(const Plan& plan)
{
    StationCheck check{plan.findings};
    for (Finding& finding : check.findings) {
        if (finding.severity == Severity::Warning) {
            finding.severity = Severity::Error;
        }
    }
    return check;
}

} // namespace mxstation
