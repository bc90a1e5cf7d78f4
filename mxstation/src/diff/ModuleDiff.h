#pragma once

#include "diff/StationMatch.h"

#include <mxstation/StationDiff.h>

namespace mxstation {

/// The channels of each module of a plan.
class ChannelsOfModules
{
public:
    /// `plan` outlives the object.
    explicit ChannelsOfModules(const Plan& plan) : channels(plan.modules.size())
    {
        for (const Channel& channel : plan.channels) {
            channels[channel.module - 1].push_back(&channel);
        }
    }

    /// Returns those of `module`, in the order of the plan.
    const std::vector<const Channel*>& of(const PlannedModule& module) const
    {
        return channels[module.position - 1];
    }

private:
    std::vector<std::vector<const Channel*>> channels;
};

/// Adds the change that only B has `module`.
void addNewModule(const PlannedModule& module, StationDifference& difference);

/// Adds the change that only A has `module`, with `channels`. They may be without data: the size of
/// the data is what the mx file states.
void addRemovedModule(const PlannedModule& module, const std::vector<const Channel*>& channels,
                      StationDifference& difference);

/// Adds the changes of a module that both stations have, without those of its channels.
void addModuleChanges(const ModulePair& pair, StationDifference& difference);

/// Adds the changes of channels of the module `name`.
void addChannelChanges(const std::string& name, const std::vector<ChannelPair>& pairs,
                       StationDifference& difference);

/// Adds the changes of the parameter image of a module that both stations have.
void addParameterChanges(const ModulePair& pair, StationDifference& difference);

} // namespace mxstation
