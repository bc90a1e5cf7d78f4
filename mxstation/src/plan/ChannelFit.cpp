#include "plan/ChannelFit.h"

namespace mxstation {

std::vector<mxmodule::Finding> fitFindings(const mxmodule::ChannelMap& /*map*/)
{
    return {};
}

} // namespace mxstation
