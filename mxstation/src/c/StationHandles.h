#pragma once

#include <mxmodule/c/CallFromC.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/StationDiff.h>
#include <mxstation/c/PlannedStation.h>
#include <mxstation/mxstation.h>

#include <memory>
#include <vector>

// What the handles of the C interface are. Each owns all that it needs.

struct mxstation_station
{
    std::shared_ptr<const mxstation::Station> station;
};

struct mxstation_plan
{
    std::shared_ptr<const mxstation::PlannedStation> planned;
};

struct mxstation_files
{
    std::vector<mxstation::ParameterFile> files;
};

struct mxstation_comparison
{
    mxstation::StationDifference difference;
};

namespace mxstation {

/// Returns the plan of `handle`. A null pointer becomes an error.
inline const Plan& planOf(const mxstation_plan* handle)
{
    return mxmodule::requirePointer(handle, "a plan of a station").planned->plan;
}

/// Returns what `resultOf` returns for the plan of `handle`.
template <typename ResultOf>
mxmodule_bytes* bytesOfPlan(const mxstation_plan* handle, mxmodule_error** error,
                            const ResultOf& resultOf)
{
    return mxmodule::callFromC(error, [&] { return mxmodule::newBytes(resultOf(planOf(handle))); });
}

} // namespace mxstation
