#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"
#include "OneThreadAtATime.h"

#include <cassert>

namespace devices::parser::mx {

namespace {

// 2^bitLength - 1, cut to eight bits.
std::uint8_t byteMask(std::uint8_t bitLength)
{
    return static_cast<std::uint8_t>(bitLength >= 8 ? 0xFFU : (1U << bitLength) - 1);
}

std::unique_ptr<IDeviceParser::ChannelMappingInfo>
makeMappingInfo(const Parser_kv38::ChannelP& channel)
{
    auto info = std::make_unique<IDeviceParser::ChannelMappingInfo>();
    info->iecSymbol = channel.iecSymbol;
    info->area = static_cast<std::uint8_t>(channel.iecSymbol[0]);
    info->sizeLetter = static_cast<std::uint8_t>(channel.iecSymbol[1]);
    info->byteAddress = channel.privateProps.byteAddress;
    info->bitOffset = channel.privateProps.bitOffset;
    info->mask = byteMask(channel.privateProps.bitLength);
    return info;
}

} // namespace

// The assertion names the parameter, which is called like the device of the last translation.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"

std::vector<std::unique_ptr<IDeviceParser::ChannelMappingInfo>>
Parser_kv38::getChannelMappingInfoList(datamodel::Device* dev)
{
    traceEntry(logger, "getChannelMappingInfoList");
    assert(dev != nullptr);
    const OneThreadAtATime::Use use(parsers, "Parser_kv38::getChannelMappingInfoList");
    std::vector<std::unique_ptr<ChannelMappingInfo>> list;
    for (const auto& attribute : dev->attributes) {
        if (attribute->typeCode() != datamodel::channelTypeCode) {
            continue;
        }
        const auto& channel = static_cast<const ChannelP&>(*attribute);
        if (channel.iecSymbol.size() < 2) {
            logLine(logger, Poco::Message::PRIO_WARNING, "channel %s: no IEC symbol assigned",
                    channel.id);
            continue;
        }
        list.push_back(makeMappingInfo(channel));
    }
    return list;
}

#pragma GCC diagnostic pop

} // namespace devices::parser::mx
