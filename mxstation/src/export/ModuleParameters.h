#pragma once

#include <mxstation/Plan.h>
#include <text/Json.h>

#include <string>
#include <vector>

namespace mxstation {

/// Throws a `mxmodule::Failure` when `plan` has errors, and for Modbus with a finding for each
/// module whose parameter image has no Modbus form.
void requireImages(const Plan& plan, mxmodule::Fieldbus fieldbus);

/// Returns the bytes that the master writes into `module`, which has a form on `fieldbus`.
std::vector<char> bytesOnBus(const PlannedModule& module, mxmodule::Fieldbus fieldbus);

/// A parameter of a module that differs from the default.
struct ChangedParameter
{
    std::string name;         ///< By which a station states it.
    std::string value;        ///< As a station states it.
    std::string shown;        ///< As people read it.
    std::string defaultShown; ///< The default, as people read it.
};

/// Returns those of `module`, in their order.
std::vector<ChangedParameter> changedParameters(const PlannedModule& module);

/// Returns the JSON of `parametersJson`. `files` are the names of the modules' files, in the order
/// of the row; empty: there are none.
text::Json parametersJsonOf(const Plan& plan, mxmodule::Fieldbus fieldbus,
                            const std::vector<std::string>& files);

} // namespace mxstation
