#include "channels/ChannelMap.h"

namespace mxtool {

namespace {

constexpr std::size_t shortestSymbol = 2;

ChannelMap::Channel join(const devices::parser::IDeviceParser::ChannelMappingInfo& info,
                         const DeviceReport::Channel& channel)
{
    return {channel.id,
            channel.number,
            channel.name,
            info.iecSymbol,
            static_cast<char>(info.area),
            static_cast<char>(info.sizeLetter),
            info.byteAddress,
            info.bitOffset,
            channel.bitLength,
            info.mask};
}

ChannelMap::Data dataOf(const DeviceReport& report, const char* offset, const char* size)
{
    return {std::stoul(report.property(offset)), std::stoul(report.property(size))};
}

unsigned bitsOf(char sizeLetter)
{
    switch (sizeLetter) {
    case 'B':
        return 8;
    case 'W':
        return 16;
    case 'D':
        return 32;
    default:
        return 64;
    }
}

} // namespace

bool ChannelMap::Channel::isBitField() const
{
    return sizeLetter == 'X' || symbol.find('#') != std::string::npos;
}

std::uint64_t ChannelMap::Channel::firstBit() const
{
    return std::uint64_t{byteAddress} * 8 + (isBitField() ? bitOffset % 8U : 0);
}

unsigned ChannelMap::Channel::bits() const
{
    return isBitField() ? bitLength : bitsOf(sizeLetter);
}

ChannelMap makeChannelMap(devices::parser::IDeviceParser& parser,
                          devices::parser::mx::Parser_kv38::DeviceP& device)
{
    const DeviceReport report = makeReport(device, {}); // of the channels alone
    const auto mapping = parser.getChannelMappingInfoList(&device);
    ChannelMap map{report.label,
                   report.deviceTypeId,
                   dataOf(report, "inDataOffset", "inDataSize"),
                   dataOf(report, "outDataOffset", "outDataSize"),
                   {},
                   {}};
    auto info = mapping.begin();
    for (const DeviceReport::Channel& channel : report.channels) {
        if (channel.symbol.size() < shortestSymbol) {
            map.withoutSymbol.push_back(channel);
        } else {
            map.channels.push_back(join(**info, channel));
            ++info;
        }
    }
    return map;
}

} // namespace mxtool
