#pragma once

#include "ExitCode.h"
#include "station/CouplerChoice.h"

#include <string>

namespace mxtool {

/// What is applied, and where its report goes.
struct ApplyOptions
{
    CouplerChoice coupler;
    bool hasConsent = false;
    std::string format; ///< Of the report; empty: that of the output's name.
    std::string output = "-";

    /// Returns "text", "json" or "html".
    std::string reportFormat() const;
};

/// Shows the plan, asks, applies it and writes the report. Throws a `Failure`; from the first write
/// on what is known of the coupler is told in any case.
ExitCode applyStation(const ApplyOptions& options, bool quiet);

} // namespace mxtool
