#pragma once

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

/// The registers of the defaults of an MX0304: module, then four channels with signal range, upper
/// and lower limit, hysteresis, wire break check and filter depth. One byte is the high byte.
inline const std::vector<std::uint16_t> defaultsOf0304 = {
    0x3200, 0x0000, 0x251C, 0xDAE4, 0x003C, 0x0100, 0x0000, 0x0100, 0x251D,
    0xDAE3, 0x003D, 0x0100, 0x0100, 0x0200, 0x251E, 0xDAE2, 0x003E, 0x0100,
    0x0200, 0x0400, 0x251F, 0xDAE1, 0x003F, 0x0100, 0x0300};
