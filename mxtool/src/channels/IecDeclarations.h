#pragma once

#include "ChannelMap.h"

namespace mxtool {

/// Returns the channels as IEC 61131-3 declarations of global variables, in their order.
///
/// Numbers of addresses are bytes. A bit field becomes one BOOL per bit, because a variable of
/// whole bytes would hold, and write, the bits of its neighbours; one that fills whole bytes
/// becomes a BYTE or an array of them; one that does neither and is longer than 32 bits becomes a
/// comment.
std::string iecDeclarations(const ChannelMap& map);

} // namespace mxtool
