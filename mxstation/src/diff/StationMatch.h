#pragma once

#include <mxstation/Plan.h>

#include <vector>

namespace mxstation {

/// A module of both stations; one is null if only the other station has it.
struct ModulePair
{
    const PlannedModule* a = nullptr;
    const PlannedModule* b = nullptr;
};

/// Returns the modules of both plans, in the order of `b`, then those that only `a` has.
std::vector<ModulePair> matchedModules(const Plan& a, const Plan& b);

/// A channel of two modules; one is null if only the other module has it.
struct ChannelPair
{
    const Channel* a = nullptr;
    const Channel* b = nullptr;
};

/// Returns the channels of both, in the order of `a`, then those that only `b` has.
std::vector<ChannelPair> matchedChannels(const std::vector<const Channel*>& a,
                                         const std::vector<const Channel*>& b);

} // namespace mxstation
