#include "images/RowIdentity.h"

#include "coupler/ModuleComparison.h"

namespace mxonline {

void requireRow(Coupler::Content& connected)
{
    const CouplerState state = connected.parameters.readIdentity(connected.client);
    const auto errors =
        compareModules(connected.plan, connected.modules, connected.target, state).identityErrors();
    if (!errors.empty()) {
        throw mxmodule::Failure(errors);
    }
}

} // namespace mxonline
