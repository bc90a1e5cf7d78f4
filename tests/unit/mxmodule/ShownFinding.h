#pragma once

#include <mxmodule/Finding.h>

#include <string>

/// Returns `finding` as lines: place, severity and text, then the hint.
inline std::string shown(const mxmodule::Finding& finding)
{
    const std::string place = finding.place.empty() ? "" : finding.place + ": ";
    const std::string hint = finding.hint.empty() ? "" : "hint: " + finding.hint + "\n";
    return place + severityName(finding.severity) + ": " + finding.text + "\n" + hint;
}
