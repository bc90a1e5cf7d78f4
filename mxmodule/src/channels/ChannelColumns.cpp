#include "mxmodule/ChannelColumns.h"

namespace mxmodule {

namespace {

void addChannel(ChannelColumns& columns, std::size_t module, const MappedChannel& channel)
{
    columns.module.push_back(static_cast<std::uint32_t>(module));
    columns.id.push_back(channel.id);
    columns.number.push_back(channel.number);
    columns.name.push_back(channel.name);
    columns.area.push_back(channel.isInput ? 'I' : 'Q');
    columns.symbol.push_back(channel.symbol);
    columns.kind.push_back(static_cast<unsigned char>(channel.kind));
    columns.byteAddress.push_back(channel.byteAddress);
    columns.bitOffset.push_back(channel.bitOffset);
    columns.bitLength.push_back(channel.bitLength);
    columns.mask.push_back(channel.mask);
}

} // namespace

ChannelColumns channelColumns(const std::vector<Module>& modules)
{
    ChannelColumns columns;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const ChannelMap map = modules[i].channelMap();
        for (const MappedChannel& channel : map.channels()) {
            addChannel(columns, i, channel);
        }
    }
    return columns;
}

} // namespace mxmodule
