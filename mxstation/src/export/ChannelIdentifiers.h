#pragma once

#include <mxstation/Plan.h>
#include <text/IecNames.h>

#include <functional>
#include <string>
#include <vector>

namespace mxstation {

/// What is appended to the identifier of a channel, one suffix per name that it needs.
using NameSuffixes = std::function<std::vector<std::string>(const Channel&)>;

/// Returns for each channel of `plan` its names, unique in `names` ignoring case, one per suffix:
/// the identifier of its alias, otherwise of module and channel. Aliases are named first, so that
/// only they themselves can be the reason for a number at their end.
std::vector<std::vector<std::string>>
channelIdentifiers(const Plan& plan, const NameSuffixes& suffixes, text::IecNames& names);

} // namespace mxstation
