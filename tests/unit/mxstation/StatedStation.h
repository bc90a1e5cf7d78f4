#pragma once

#include <mxstation/Plan.h>

#include <string>

/// Returns the station in `source`, a text beside the example modules called "line.yaml".
inline mxstation::Station statedStation(const std::string& source)
{
    return mxstation::stationOf(source, std::string(EXAMPLE_MODULES) + "/line.yaml");
}

/// Returns its plan.
inline mxstation::Plan statedPlan(const std::string& source)
{
    return mxstation::plan(statedStation(source));
}
