#pragma once

#include "channels/ChannelBits.h"

#include <mxonline/ChannelValue.h>

#include <string>

namespace mxonline {

/// Returns the value of `channel` whose bits are `bits`.
ChannelValue valueOf(const mxstation::Channel& channel, const ValueBits& bits);

/// Returns whether `value` has at most 64 bits: its text is a decimal number.
bool isNumber(const ChannelValue& value);

/// Returns the bits of the value `text` of `channel`: for one bit 0 or 1, false or true, off or on;
/// for at most 64 bits a decimal number, or the bits as a hexadecimal one after "0x"; for more the
/// bytes as `ChannelValue::text`. Throws a `mxmodule::Failure` of origin `Request`, without a
/// place, that says what is accepted.
ValueBits bitsOf(const mxstation::Channel& channel, const std::string& text);

/// Returns what `bitsOf` accepts: "0 or 1", "-128 to 127", "9 bytes as hexadecimal digits".
std::string acceptedValues(const mxstation::Channel& channel);

} // namespace mxonline
