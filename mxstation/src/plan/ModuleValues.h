#pragma once

#include "plan/PlanFindings.h"

#include <mxstation/Plan.h>

#include <map>

namespace mxstation {

/// Computes the parameter images of planned modules.
class ModuleValues
{
public:
    /// Both outlive the object.
    ModuleValues(const Station& planned, PlanFindings& collected)
        : station(planned), findings(collected)
    {}

    /// Sets image and registers of `planned`, the module of `entry`. Rejected values are errors.
    void set(const Entry& entry, PlannedModule& planned);

private:
    // The registers of a parameter block.
    struct Registers
    {
        std::vector<std::uint16_t> values;
        std::optional<mxmodule::Finding> none;
    };

    void setDefaults(const Entry& entry, PlannedModule& planned);
    void setComposed(const Entry& entry, PlannedModule& planned);

    const Station& station;
    PlanFindings& findings;
    std::map<const char*, Registers> defaults; // by the bytes of the mx file
};

} // namespace mxstation
