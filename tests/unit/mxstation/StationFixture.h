#pragma once

#include <mxmodule/Population.h>
#include <mxmodule/ReadFile.h>
#include <mxstation/Plan.h>

#include <string>
#include <vector>

/// Returns the station in `source`, whose paths count from the directory of the example modules.
inline mxstation::Station stationWith(const std::string& source)
{
    return mxstation::stationOf(source, std::string(EXAMPLE_MODULES) + "/station.yaml");
}

/// Returns its plan.
inline mxstation::Plan planWith(const std::string& source)
{
    return mxstation::plan(stationWith(source));
}

/// Returns a finding as "LINE:COLUMN SEVERITY TEXT".
inline std::string shownFinding(const mxmodule::Finding& finding)
{
    const std::string file = std::string(EXAMPLE_MODULES) + "/station.yaml";
    const bool isOfFile = finding.place.compare(0, file.size(), file) == 0;
    const std::string place = isOfFile && finding.place.size() > file.size()
                                  ? finding.place.substr(file.size() + 1)
                                  : finding.place;
    return place + " " + severityName(finding.severity) + " " + finding.text;
}

/// Returns findings in this form.
inline std::vector<std::string> shownFindings(const std::vector<mxmodule::Finding>& findings)
{
    std::vector<std::string> shown;
    for (const mxmodule::Finding& finding : findings) {
        shown.push_back(shownFinding(finding));
    }
    return shown;
}

/// Returns the modules of `plan` as "NAME in OFFSET+SIZE out OFFSET+SIZE".
inline std::vector<std::string> shownModules(const mxstation::Plan& plan)
{
    const auto bytes = [](const mxstation::ImageBytes& data) {
        return std::to_string(data.offset) + "+" + std::to_string(data.size);
    };
    std::vector<std::string> shown;
    for (const mxstation::PlannedModule& module : plan.modules) {
        shown.push_back(module.name + " in " + bytes(module.input) + " out " +
                        bytes(module.output));
    }
    return shown;
}

/// Returns the gaps of `plan` as "in padding 3.0+8 NAME": first byte and bit, number of bits.
inline std::vector<std::string> shownGaps(const mxstation::Plan& plan)
{
    std::vector<std::string> shown;
    for (const mxstation::Gap& gap : plan.gaps) {
        shown.push_back(std::string(gap.isInput ? "in " : "out ") + gapReasonName(gap.reason) +
                        " " + std::to_string(gap.firstBit / 8) + "." +
                        std::to_string(gap.firstBit % 8) + "+" + std::to_string(gap.bits) +
                        (gap.name.empty() ? "" : " " + gap.name));
    }
    return shown;
}
