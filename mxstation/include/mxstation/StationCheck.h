#pragma once

#include "mxstation/Plan.h"

#include <string>
#include <vector>

namespace mxstation {

/// Everything that is wrong with a station.
struct StationCheck
{
    std::vector<mxmodule::Finding> findings; ///< Those of the plan; its warnings are errors.

    /// Returns how many findings have this severity.
    MXSTATION_API std::size_t countOf(mxmodule::Severity severity) const;

    /// Returns whether nothing is wrong: there are at most notes.
    bool isClean() const { return countOf(mxmodule::Severity::Error) == 0; }

    /// Returns the findings as JSON, schema "mxtool.station-check" version 1.
    MXSTATION_API std::string json() const;
};

/// Returns the findings of `plan` as a check states them.
MXSTATION_API StationCheck checkOf(const Plan& plan);

} // namespace mxstation
