#pragma once

#include <mxstation/Plan.h>

#include <string>

namespace mxstation {

/// Returns `channel "AI 1" of module 2 "Levels"`, for messages.
std::string channelText(const Channel& channel);

/// Returns a warning about `channel`, at the place of its module in the station. `text` follows its
/// name.
mxmodule::Finding channelWarning(const Plan& plan, const Channel& channel, const std::string& text,
                                 const std::string& hint = {});

} // namespace mxstation
