#pragma once

#include "mxmodule/Module.h"
#include "mxmodule/MxmoduleApi.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mxmodule {

/// The channels of several modules that have a place in a process image, column by column, for
/// tables of many modules. Each vector has one element for each channel, as `MappedChannel` has it.
struct ChannelColumns
{
    std::vector<std::uint32_t> module;      ///< Position of the module in the list of modules.
    std::vector<std::string> id;            ///< Identifier in the device, decimal.
    std::vector<std::uint32_t> number;      ///< Several channels may have the same.
    std::vector<std::string> name;          ///< May be empty.
    std::vector<std::uint32_t> area;        ///< 'I' or 'Q'.
    std::vector<std::string> symbol;        ///< IEC address such as "IW4".
    std::vector<std::uint32_t> kind;        ///< Size letter 'X', 'B', 'W', 'D' or 'L'.
    std::vector<std::uint32_t> byteAddress; ///< First byte in the image.
    std::vector<std::uint32_t> bitOffset;   ///< As in the mx file; may be above 7.
    std::vector<std::uint32_t> bitLength;   ///< In bits.
    std::vector<std::uint32_t> mask;        ///< 2^(number of bits) - 1, cut to eight bits.
};

/// Returns the channels of `modules`, in their order and that of the devices.
MXMODULE_API ChannelColumns channelColumns(const std::vector<Module>& modules);

} // namespace mxmodule
