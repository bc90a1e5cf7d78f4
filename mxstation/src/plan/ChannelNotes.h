#pragma once

#include "plan/PlanFindings.h"

#include <mxmodule/ChannelMap.h>

#include <map>
#include <string>
#include <vector>

namespace mxstation {

/// Finds the channels that the notes of a station are about.
class ChannelNotes
{
public:
    /// `collected` outlives the object.
    explicit ChannelNotes(PlanFindings& collected) : findings(collected) {}

    /// Returns for each channel of `map` its note, or null, in the order of the channels. Notes of
    /// unknown or ambiguous channels, aliases that are used twice in the station, and aliases
    /// without effect are findings.
    std::vector<const ChannelNote*> of(const Entry& entry, const mxmodule::ChannelMap& map);

private:
    void checkAlias(const ChannelNote& note);

    PlanFindings& findings;
    std::map<std::string, SourcePlace> aliasPlaces; // by the alias in lower case
};

} // namespace mxstation
