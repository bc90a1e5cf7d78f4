#pragma once

#include <mxstation/mxstation.h>

#include <FromC.h>

#include <string>

using testkit::contentOf;
using testkit::ErrorFromC;
using testkit::errorOf;
using testkit::FromC;

using StationFromC = FromC<mxstation_station, mxstation_free>;
using PlanFromC = FromC<mxstation_plan, mxstation_plan_free>;

/// Returns the station in `source`, a text beside the example modules called "line.yaml".
inline StationFromC stationFromC(const std::string& source)
{
    const std::string name = std::string(EXAMPLE_MODULES) + "/line.yaml";
    return StationFromC(
        mxstation_from_text(source.data(), source.size(), name.c_str(), nullptr, nullptr));
}

/// Returns its plan.
inline PlanFromC planFromC(const std::string& source)
{
    return PlanFromC(mxstation_plan_of(stationFromC(source).get(), nullptr));
}
