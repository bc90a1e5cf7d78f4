#pragma once

#include "coupler/ModuleDefaults.h"

#include <mxonline/Coupler.h>
#include <mxstation/Plan.h>

#include <string>
#include <vector>

/// Returns the plan of the station in `source`, a text beside the example modules. Times to wait
/// are short where the text does not state them.
inline mxstation::Plan onlinePlan(const std::string& source)
{
    mxstation::Plan plan = mxstation::plan(
        mxstation::stationOf(source, std::string(EXAMPLE_MODULES) + "/station.yaml"));
    if (plan.modbus && source.find("timeout:") == std::string::npos) {
        plan.modbus->timeout = 300;
        plan.modbus->retries = 0;
    }
    return plan;
}

/// Returns the text of the first finding of the failure of `action`, or "no failure".
template <typename Action>
std::string failureOf(const Action& action)
{
    try {
        action();
    } catch (const mxmodule::Failure& failure) {
        return failure.findings().front().text;
    }
    return "no failure";
}
