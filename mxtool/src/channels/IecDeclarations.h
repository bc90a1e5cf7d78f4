#pragma once

#include "ChannelMap.h"

namespace mxtool {

/// Returns the channels as IEC 61131-3 declarations of global variables, in their order.
///
/// Addresses count bytes. A bit field becomes one BOOL per bit, because a variable of whole bytes
/// would include, and write, bits of its neighbours. A bit field that fills whole bytes becomes a
/// BYTE or an array of BYTE; any other of more than 32 bits becomes a comment.
std::string iecDeclarations(const ChannelMap& map);

} // namespace mxtool
