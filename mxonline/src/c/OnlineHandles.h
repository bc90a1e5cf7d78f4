#pragma once

#include <mxmodule/c/CallFromC.h>
#include <mxonline/OutputSetting.h>
#include <mxonline/Simulator.h>
#include <mxonline/Watch.h>
#include <mxonline/mxonline.h>
#include <mxstation/c/PlannedStation.h>

#include <memory>

// What the handles of the C interface are.

namespace mxonline {

/// A coupler, which its watches and outputs share.
struct SharedCoupler
{
    std::shared_ptr<const mxstation::PlannedStation> planned;
    Target target;
    Coupler coupler;
};

} // namespace mxonline

struct mxonline_coupler
{
    std::shared_ptr<mxonline::SharedCoupler> shared;
};

struct mxonline_difference
{
    mxonline::CouplerDifference difference;
};

struct mxonline_report
{
    mxonline::ApplyReport report;
};

struct mxonline_watch
{
    std::shared_ptr<mxonline::SharedCoupler> shared; // before what refers to it
    mxonline::Watch watch;
};

struct mxonline_outputs
{
    std::shared_ptr<mxonline::SharedCoupler> shared; // before what refers to it
    mxonline::OutputSetting setting;
};

struct mxonline_simulator
{
    mxonline::Simulator simulator;

    mxonline_simulator(const mxstation::Plan& plan, const mxonline::Target& listen,
                       const mxonline::SimulatorOptions& options)
        : simulator(plan, listen, options)
    {}
};

namespace mxonline {

/// Returns the coupler of `handle`. A null pointer becomes an error.
inline const std::shared_ptr<SharedCoupler>& sharedOf(const mxonline_coupler* handle)
{
    return mxmodule::requirePointer(handle, "a coupler").shared;
}

} // namespace mxonline
