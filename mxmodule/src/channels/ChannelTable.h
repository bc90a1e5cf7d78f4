#pragma once

#include <mxformat/ChannelRecord.h>
#include <mxmodule/ChannelMap.h>
#include <mxmodule/Observer.h>

#include <cstdint>
#include <string>
#include <vector>

namespace mxmodule {

class TranslatedModule;

/// The places of a module's channels in the process images.
struct ChannelTable
{
    using Data = ImageBytes; ///< Of the module in one image.

    std::string label; ///< Bytes of the mx file.
    std::string deviceTypeId;
    Data input;
    Data output;
    std::vector<MappedChannel> channels; ///< In the order of the device.
    std::vector<Channel> withoutSymbol;  ///< Channels in no image.

    /// The channel records of the mx data, also those of channels omitted because of their name.
    std::vector<mxformat::ChannelRecord> records;
    std::vector<std::size_t> recordOfChannel; ///< For each of `channels` the position in `records`.
};

/// Combines the mapping list of the parser with the channels of the device and their records in the
/// mx data. `observer` gets the parser's lines on channels without a symbol.
ChannelTable makeChannelTable(const TranslatedModule& module, Observer* observer = nullptr);

} // namespace mxmodule
