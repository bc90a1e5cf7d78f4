#pragma once

#include "mxonline/ApplyReport.h"
#include "mxonline/CouplerDifference.h"
#include "mxonline/CouplerState.h"
#include "mxonline/Target.h"
#include "mxonline/Traffic.h"

#include <mxmodule/Observer.h>
#include <mxstation/Plan.h>

#include <memory>

namespace mxonline {

/// The coupler of a station over Modbus. Connects at the first operation, and again after a fault.
///
/// Operations throw a `mxmodule::Failure` of origin `Output` that names module, parameter or
/// channel, registers, what was sent and received, and what to do. One coupler is used by one
/// thread at a time.
class MXONLINE_API Coupler
{
public:
    /// Keeps a copy of `plan`. `observer` is told of repeated requests; it outlives the coupler and
    /// may be null. Throws a `mxmodule::Failure` when the plan has errors or no `modbus:` map, or
    /// when a parameter image has no Modbus form. Sends nothing.
    Coupler(const mxstation::Plan& plan, const Target& target,
            mxmodule::Observer* observer = nullptr);
    ~Coupler();
    Coupler(Coupler&&) noexcept;            ///< Leaves the other one unusable.
    Coupler& operator=(Coupler&&) noexcept; ///< The same.

    /// Reads the identity and the parameters of all modules.
    CouplerState read();

    /// Reads the coupler and compares it with the plan. Writes nothing.
    CouplerDifference difference();

    /// Writes the parameters that differ, commits, reads everything back and compares.
    ///
    /// `confirmed` is what a person agreed to: if the coupler no longer differs in the same way,
    /// or a module is not that of the station, nothing is written and a `mxmodule::Failure` is
    /// thrown; of origin `Request` if it is of another target or unit. After that a fault is in the
    /// report, which is never thrown away. The observer is told of the progress before each request
    /// that writes; a `Failure` that it throws then ends the writing, without a commit, and is in
    /// the report.
    ApplyReport apply(const CouplerDifference& confirmed);

    /// Returns what went over the bus until now.
    Traffic traffic() const;

    class Content;

private:
    friend class Watch;
    friend class OutputSetting;
    std::unique_ptr<Content> content;
};

} // namespace mxonline
