#pragma once

#include "bus/ModbusClient.h"
#include "channels/ChannelBits.h"

#include <mxstation/Plan.h>

#include <cstddef>
#include <string>
#include <vector>

namespace mxonline {

/// Writes the registers of `channels`, outputs of `plan`, with the bits of `image` in as few
/// requests as the map's function allows; registers of other channels are not written. By function
/// 22 only the bits of the channels. Throws a `mxmodule::Failure`.
void writeOutputs(ModbusClient& client, const mxstation::Plan& plan,
                  const std::vector<std::size_t>& channels, const ProcessImage& image);

} // namespace mxonline
