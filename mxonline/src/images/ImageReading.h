#pragma once

#include "bus/RegisterReading.h"
#include "channels/ChannelBits.h"

#include <mxstation/Plan.h>

#include <cstddef>
#include <vector>

namespace mxonline {

/// Returns the registers that contain `channel`, which has a value, of `plan`, whose map is stated.
RegisterRange registersOf(const mxstation::Plan& plan, const mxstation::Channel& channel);

/// Reads the registers of channels of one process image.
class ImageReading
{
public:
    /// Of those channels of `plan` in `channels`, indexes, that are inputs, or outputs. The map of
    /// `plan`, which outlives the object, is stated.
    ImageReading(const mxstation::Plan& plan, bool isInput,
                 const std::vector<std::size_t>& channels);

    /// Throws a `mxmodule::Failure`; the image is then not complete.
    void read(ModbusClient& client);

    /// Returns the image as last read, before that 0; what no channel needed is not as on the
    /// coupler. It has whole registers.
    const ProcessImage& image() const { return bytes; }

    std::size_t requestCount() const { return reading.requestCount(); } ///< That `read` sends.

private:
    ImageReading(const mxstation::Plan& plan, bool isInput, const std::vector<RegisterItem>& items);

    const mxstation::ModbusMap& map;
    std::uint32_t address;             // of the image
    std::vector<RegisterRange> ranges; // to be copied, each once
    RegisterReading reading;
    ProcessImage bytes;
};

} // namespace mxonline
