#include "images/RowIdentity.h"

namespace mxonline {

void requireRow(Coupler::Content& connected)
{
    const CouplerState state = connected.parameters.readIdentity(connected.client);
    const auto errors = compare(connected.plan, connected.target, state).identityErrors();
    if (!errors.empty()) {
        throw mxmodule::Failure(errors);
    }
}

} // namespace mxonline
