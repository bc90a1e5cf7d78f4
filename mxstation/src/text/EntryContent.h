#pragma once

#include <mxstation/Station.h>

namespace mxstation {

/// Returns whether two bytes are stated as the same number, or both not.
bool isSameByte(const std::optional<StatedByte>& a, const std::optional<StatedByte>& b);

/// Returns whether two entries state the same module, name, reserved place and channels. Parameters
/// and pinned addresses are not compared.
bool isSameBesidesParameters(const Entry& a, const Entry& b);

/// Returns whether two entries state the same notes of channels, in any order.
bool isSameChannels(const Entry& a, const Entry& b);

/// Returns whether two entries state the same parameters in the same order.
bool isSameParameters(const Entry& a, const Entry& b);

} // namespace mxstation
